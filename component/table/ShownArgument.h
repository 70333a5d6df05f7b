#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

namespace zu::component {

/// An argument as texts for people show it: texts in quotation marks, lists with their elements in brackets,
/// other values as their text, what has none by its kind ("an object", "Null"). Long ones are shortened.
/// Never throws for a value that cannot be shown; then it is "a value".
std::wstring Shown(const VARIANT& argument);

/// "table \"sales>orders\"", from a table definition.
std::wstring ShownTable(const VARIANT& tableDefn);

/// The table of a definition and what was looked for in it, to complete "No record of ":
/// "table \"sales>orders\" has the key 4711".
std::wstring ShownSearch(const VARIANT& tableDefn, const VARIANT& keyOrCondition);

}  // namespace zu::component
