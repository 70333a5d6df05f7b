#pragma once

#include <windows.h>

#include <oleauto.h>

#include <map>
#include <string>
#include <vector>

#include "com/ComPtr.h"

namespace zu::typelib {

/// What a type library says, as lines of text that a table in a test can state.
///
/// An operation reads "5 DbfTop method 0x60030004 (optional inout DataView: VARIANT*) -> Boolean": its
/// position after the seven of IDispatch, its kind (method, get, put, putref), dispatch id, parameters with
/// their flags and defaults, and its value. `restricted` and `hidden` follow where they hold. Type names are
/// those of scripts (Long, Boolean); a star is a reference, objects are pointers already.
class LibraryReader {
public:
    /// `place` is a file, or a file with a resource number behind it. Throws ComError.
    explicit LibraryReader(const std::wstring& place);

    /// "Name {identifier} version", then the help file in quotes where there is one.
    std::string Identity() const;
    /// The names of all types by kind, sorted: "interface _Functions".
    std::vector<std::string> Types() const;

    /// "{identifier} dual oleautomation: base".
    std::string Interface(const wchar_t* name) const;
    std::vector<std::string> Operations(const wchar_t* name) const;
    /// Help strings by operation; operations without one are left out.
    std::map<std::string, std::string> HelpStrings(const wchar_t* name) const;

    /// "{identifier}: [default] _Functions, [default source] ..." with "not creatable" where that holds.
    std::string Class(const wchar_t* name) const;
    /// "Name = value" in order.
    std::vector<std::string> Enumeration(const wchar_t* name) const;
    /// Dispatch-only operations of a dispinterface, in the form of Operations without position.
    std::vector<std::string> Events(const wchar_t* name) const;

private:
    com::ComPtr<ITypeInfo> Find(const wchar_t* name, TYPEKIND kind) const;

    com::ComPtr<ITypeLib> library_;
};

}  // namespace zu::typelib
