#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <string_view>

namespace zu::component {

/// The format of currency columns.
inline constexpr std::wstring_view kCurrencyFormat = L"Currency";
/// "0." and as many zeros as decimal places.
std::wstring FixedFormat(LONG decimals);

/// What a cell shows for a value: empty for Null, else the value in the column's format when there is one,
/// else as text. Dates and currency follow the user's settings; numbers keep the decimal point, which is what
/// can be typed in again. Throws ComError for a value that has no text.
std::wstring CellText(const VARIANT& value, std::wstring_view format);

/// What the editor of a cell begins with: as CellText, but currency without symbol and groups.
std::wstring EditText(const VARIANT& value, std::wstring_view format);

}  // namespace zu::component
