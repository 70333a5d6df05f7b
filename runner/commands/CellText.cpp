#include "runner/commands/CellText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cwchar>

#include "com/Variant.h"
#include "portable/calendar/Calendar.h"

namespace zu::runner::commands {
namespace {

constexpr unsigned kCurrencyPlaces = 4;

std::wstring Widened(std::string_view text) {
    return {text.begin(), text.end()};
}

std::wstring WithPoint(std::wstring digits, unsigned scale, bool negative) {
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), L'0');
    if (scale > 0) digits.insert(digits.size() - scale, 1, L'.');
    if (negative) digits.insert(0, 1, L'-');
    return digits;
}

std::wstring DecimalText(const DECIMAL& value) {
    std::array<std::uint32_t, 3> limbs = {value.Hi32, static_cast<std::uint32_t>(value.Lo64 >> 32),
                                          static_cast<std::uint32_t>(value.Lo64)};
    std::wstring digits;
    do {
        std::uint64_t rest = 0;
        for (std::uint32_t& limb : limbs) {
            rest = rest << 32 | limb;
            limb = static_cast<std::uint32_t>(rest / 10);
            rest %= 10;
        }
        digits += static_cast<wchar_t>(L'0' + rest);
    } while (limbs[0] != 0 || limbs[1] != 0 || limbs[2] != 0);
    std::reverse(digits.begin(), digits.end());
    const bool zero = digits == L"0";
    return WithPoint(std::move(digits), value.scale, (value.sign & DECIMAL_NEG) != 0 && !zero);
}

std::wstring CurrencyText(std::int64_t units) {
    const bool negative = units < 0;
    const std::uint64_t size =
        negative ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
    return WithPoint(std::to_wstring(size), kCurrencyPlaces, negative);
}

template <class Number>
std::wstring ShortestText(Number value) {
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return Widened({text.data(), static_cast<std::size_t>(end - text.data())});
}

std::wstring DateText(double date) {
    std::int32_t day = 0;
    std::int32_t milliseconds = 0;
    calendar::FromAutomationDate(date, day, milliseconds);
    const calendar::Date parts = calendar::FromJulianDay(day);
    std::array<wchar_t, 48> text{};
    std::swprintf(text.data(), text.size(), L"%04d-%02d-%02d", parts.year, parts.month, parts.day);
    std::wstring result = text.data();
    if (milliseconds == 0) return result;
    const int seconds = milliseconds / 1000;
    std::swprintf(text.data(), text.size(), L"T%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60,
                  seconds % 60);
    result += text.data();
    if (milliseconds % 1000 != 0) {
        std::swprintf(text.data(), text.size(), L".%03d", milliseconds % 1000);
        result += text.data();
    }
    return result;
}

std::wstring HexText(const VARIANT& value) {
    SAFEARRAY* array = value.vt & VT_BYREF ? *value.pparray : value.parray;
    LONG lower = 0;
    LONG upper = -1;
    if (!array || SafeArrayGetDim(array) != 1 || SafeArrayGetElemsize(array) != 1) return {};
    com::Check(SafeArrayGetLBound(array, 1, &lower));
    com::Check(SafeArrayGetUBound(array, 1, &upper));
    std::wstring text;
    constexpr std::wstring_view kDigits = L"0123456789abcdef";
    for (LONG index = lower; index <= upper; ++index) {
        std::uint8_t byte = 0;
        com::Check(SafeArrayGetElement(array, &index, &byte));
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

bool IsFinite(const VARIANT& value) {
    if (value.vt == VT_R4) return std::isfinite(value.fltVal);
    return value.vt != VT_R8 || std::isfinite(value.dblVal);
}

bool IsNumber(VARTYPE type) {
    switch (type) {
        case VT_I2:
        case VT_I4:
        case VT_UI1:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL:
            return true;
        default:
            return false;
    }
}

}  // namespace

std::optional<std::wstring> CellText(const VARIANT& reference) {
    const VARIANT& value = com::Dereference(reference);
    if (value.vt & VT_ARRAY) return HexText(value);
    switch (value.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return std::nullopt;
        case VT_BOOL:
            return value.boolVal != VARIANT_FALSE ? L"true" : L"false";
        case VT_I2:
            return std::to_wstring(value.iVal);
        case VT_I4:
            return std::to_wstring(value.lVal);
        case VT_UI1:
            return std::to_wstring(value.bVal);
        case VT_R4:
            return ShortestText(value.fltVal);
        case VT_R8:
            return ShortestText(value.dblVal);
        case VT_CY:
            return CurrencyText(value.cyVal.int64);
        case VT_DECIMAL:
            return DecimalText(value.decVal);
        case VT_DATE:
            return DateText(value.date);
        default:
            return com::Convert(value, VT_BSTR).ToText().str();
    }
}

std::wstring CellJson(const VARIANT& reference) {
    const VARIANT& value = com::Dereference(reference);
    const std::optional<std::wstring> text = CellText(value);
    if (!text || !IsFinite(value)) return L"null";
    if (IsNumber(value.vt) || value.vt == VT_BOOL) return *text;
    return JsonString(*text);
}

std::wstring JsonString(std::wstring_view text) {
    std::wstring json = L"\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        const bool high = c >= 0xD800 && c < 0xDC00;
        const bool low = c >= 0xDC00 && c < 0xE000;
        const bool pair = high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
        if (c == L'"' || c == L'\\') {
            json += L'\\';
            json += c;
        } else if (pair) {
            json += c;
            json += text[++i];
        } else if (c == L'\n') {
            json += L"\\n";
        } else if (c == L'\r') {
            json += L"\\r";
        } else if (c == L'\t') {
            json += L"\\t";
        } else if (c < 0x20 || high || low) {
            // Half a character has no UTF-8.
            std::array<wchar_t, 8> escape{};
            std::swprintf(escape.data(), escape.size(), L"\\u%04x", static_cast<unsigned>(c));
            json += escape.data();
        } else {
            json += c;
        }
    }
    return json + L'"';
}

}  // namespace zu::runner::commands
