#pragma once

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <string>

namespace zu::runner::commands {

/// The text of a value, the same on every system and for every user: numbers with all their digits and a
/// point, dates as 2026-11-21 or 2026-11-21T08:30:00, truth values as true and false, bytes in hexadecimal.
/// Nothing for a value that is none (Null).
std::optional<std::wstring> CellText(const VARIANT& value);

/// The value in JSON: numbers as numbers with all their digits, texts, dates and bytes as strings, null for a
/// value that is none and for numbers that JSON does not know (infinite ones).
std::wstring CellJson(const VARIANT& value);

/// A string of JSON, with its quotes.
std::wstring JsonString(std::wstring_view text);

}  // namespace zu::runner::commands
