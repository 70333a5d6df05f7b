#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "runner/CallArguments.h"
#include "runner/Unknown.h"

namespace zu::runner {

/// An object for scripts whose members are a table of names and functions.
///
/// Names are found without regard to case. A property that takes no arguments of its own hands those that a
/// script gives it on to the default member of its value, so that `Arguments(0)` means `Arguments.Item(0)`.
/// Exceptions of members become script errors with their description.
class NamedMembers : public Unknown<IDispatch> {
public:
    using Member = std::function<com::Variant(const CallArguments&)>;
    using Getter = std::function<com::Variant()>;
    using Putter = std::function<void(const VARIANT&)>;

    /// A method or a property with arguments.
    void AddMethod(std::wstring_view name, Member member);
    /// A property without arguments; without `put` it is read-only.
    void AddProperty(std::wstring_view name, Getter get, Putter put = {});
    /// The member that is meant when a script calls the object itself. It must have been added.
    void MakeDefault(std::wstring_view name);
    /// What For Each walks over.
    void SetElements(std::function<std::vector<com::Variant>()> elements);

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

private:
    struct Entry {
        std::wstring name;
        Member method;  // for methods
        Getter get;     // for properties
        Putter put;
    };

    Entry* Find(std::wstring_view name) noexcept;
    com::Variant Call(DISPID id, WORD flags, const CallArguments& arguments);
    com::Variant Enumerate() const;

    std::vector<Entry> entries_;  // the dispatch id is the index plus one
    DISPID default_ = DISPID_UNKNOWN;
    std::function<std::vector<com::Variant>()> elements_;
};

}  // namespace zu::runner
