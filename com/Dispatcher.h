#pragma once

#include <windows.h>

#include <oleauto.h>

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/InterfaceTable.h"

namespace zu::com {

/// What a class tells the dispatcher beyond its type library. A class hands it out by an optional member
/// `static com::DispatchOptions dispatchOptions()`.
struct DispatchOptions {
    /// Internal operations that only the module's own classes may call. From outside their names are known,
    /// and calling one fails with kInvalidFriendCall.
    std::span<const wchar_t* const> friends;
    /// Interfaces of other libraries among the parameters. Where one is missing here it is looked up through
    /// the registered type library, which need not be there.
    std::span<const ForeignType> foreign;
};

/// The IDispatch half of an object: finds members by name and calls the typed vtable methods.
///
/// It exists because script engines pass values in forms that the type library's own Invoke refuses:
///  - a variable (a reference to a VARIANT) for any by-reference parameter; changes are written back;
///  - arrays of any element type, by value or by reference, JScript arrays, and plain trailing values for an
///    array parameter that is the last one;
///  - objects by value or by reference for by-reference object parameters;
///  - every optional argument left out: typed parameters get the default of the type library, VARIANTs arrive
///  as
///    missing whatever default the library shows (the method applies it), texts arrive as null, objects as
///    none;
///  - named arguments; METHOD and PROPERTYGET, PROPERTYPUT and PROPERTYPUTREF interchangeably;
///  - arguments to a member that takes none but answers an object go to that object's default member, and an
///    assignment to a read-only member that answers an object goes to the object's default member.
///
/// Immutable once made; shared by all objects of a class on all threads.
class Dispatcher {
public:
    /// `interfaces` in order of precedence. Throws ComError when the type library does not describe one.
    Dispatcher(std::span<const IID> interfaces, const DispatchOptions& options);

    HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept;

    /// `pointers` holds the object's interface pointers in the order of the constructor's list.
    HRESULT Invoke(std::span<void* const> pointers, DISPID id, LCID locale, WORD flags,
                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                   UINT* badArgument) const noexcept;

    const std::vector<InterfaceTable>& interfaces() const noexcept { return interfaces_; }

private:
    struct Found {
        const Member* member = nullptr;
        void* object = nullptr;
    };
    struct Name {
        std::wstring folded;
        DISPID id;
    };

    Found Find(std::span<void* const> pointers, DISPID id, WORD flags) const noexcept;
    const Member* FindMember(DISPID id) const noexcept;
    bool IsFriend(DISPID id) const noexcept;
    HRESULT InvokeChecked(std::span<void* const> pointers, DISPID id, LCID locale, WORD flags,
                          DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* exception,
                          UINT* badArgument) const;

    std::vector<InterfaceTable> interfaces_;
    std::vector<Name> names_;  // sorted by folded name
    std::size_t friends_ = 0;
};

}  // namespace zu::com
