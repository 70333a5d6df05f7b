#pragma once

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "com/Variant.h"

namespace zu::com {

/// An interface of another type library that parameters of this name have.
struct ForeignType {
    const wchar_t* parameter;
    IID interfaceId;
};

/// One parameter of a vtable method, or its result, with everything that a call needs to know.
struct Parameter {
    std::wstring name;
    /// What one value is: VT_I4, VT_BSTR, VT_VARIANT, ...; VT_DISPATCH for any object; VT_ARRAY with the type
    /// of the elements for arrays. Enumerations are VT_I4.
    VARTYPE type = VT_EMPTY;
    bool byReference = false;
    bool optional = false;
    /// Only for typed parameters; see Dispatcher for omitted VARIANTs.
    std::optional<Variant> omitted;
    /// For objects: the interface; IID_NULL when its type library could not be found.
    IID interfaceId{};
};

/// One method of the vtable.
struct Member {
    std::wstring name;
    DISPID id = DISPID_UNKNOWN;
    INVOKEKIND kind = INVOKE_FUNC;
    bool restricted = false;
    std::size_t offset = 0;  ///< in the vtable, bytes
    std::vector<Parameter> parameters;
    std::optional<Parameter> result;

    /// Arguments that a caller must give at least.
    std::size_t required() const noexcept;
    /// True when the last parameter is an array, which trailing values can fill.
    bool gathersTrailing() const noexcept;
};

/// One dual interface as a table, read once from the type library. It holds plain data and no COM reference,
/// so that it may be destroyed at any time.
class InterfaceTable {
public:
    /// Throws ComError.
    InterfaceTable(REFIID id, std::span<const ForeignType> foreign);

    /// Sorted by dispatch id; one id has several members when it is a property that can be put.
    const std::vector<Member>& members() const noexcept { return members_; }

    /// The members with this dispatch id.
    std::span<const Member> Find(DISPID id) const noexcept;

private:
    std::vector<Member> members_;
};

/// Names of members and parameters are compared without regard to case; they are ASCII.
std::wstring Fold(std::wstring_view name);
bool SameName(std::wstring_view left, std::wstring_view right) noexcept;
/// The order of folded names, for names of any case.
bool ComesBefore(std::wstring_view left, std::wstring_view right) noexcept;

}  // namespace zu::com
