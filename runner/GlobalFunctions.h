#pragma once

#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "com/ComError.h"
#include "com/ComPtr.h"
#include "com/Variant.h"
#include "runner/Unknown.h"

namespace zu::runner {

/// The table functions and the constants of their type library as global names of a script.
///
/// Script engines do not show the constants of type libraries by themselves; here each is a property. The
/// component is created when a script first uses a name that the script itself does not define. When it
/// cannot be created, its functions exist all the same and raise an error that says why.
class GlobalFunctions final : public Unknown<IDispatch> {
public:
    /// Hears of the calls of functions.
    class CallWatch {
    public:
        virtual ~CallWatch() = default;
        virtual void OnCall() noexcept = 0;
        /// Called after each OnCall. A com::ComError becomes the error of the call.
        virtual void OnReturn() = 0;
    };

    /// `create` makes the component's object or throws com::ComError with the reason. `watch`, which may be
    /// null, must outlive the object or its last call.
    explicit GlobalFunctions(std::function<com::ComPtr<IDispatch>()> create, CallWatch* watch = nullptr)
        : create_(std::move(create)), watch_(watch) {}

    /// The component's object itself. Throws what `create` throws.
    com::ComPtr<IDispatch> Functions();

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

private:
    struct Constant {
        std::wstring name;
        com::Variant value;
    };

    HRESULT FindName(LPOLESTR* names, UINT count, LCID locale, DISPID* ids);
    void ReadConstants(IDispatch& functions);
    void ReadEnumeration(ITypeInfo& type);

    std::function<com::ComPtr<IDispatch>()> create_;
    CallWatch* watch_;
    com::ComPtr<IDispatch> functions_;
    std::optional<com::ComError> failure_;
    std::vector<Constant> constants_;
};

}  // namespace zu::runner
