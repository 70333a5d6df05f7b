#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

namespace zu::runner {

/// A value as people read it: texts as they are; numbers, dates, decimals and truth values as CStr of
/// VBScript shows them; Empty as nothing; Null as "Null"; Nothing as "Nothing"; arrays as their elements in
/// parentheses; an object by its default value, or by its type in brackets when it has none. Never fails.
std::wstring ValueText(const VARIANT& value);

/// A value as cscript's own Echo and streams write it: truth values as -1 and 0, Null as "null".
/// Throws com::ComError (type mismatch) for a value without a text.
std::wstring HostText(const VARIANT& value);

}  // namespace zu::runner
