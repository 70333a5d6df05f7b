#include "component/ui/CellText.h"

#include <algorithm>
#include <array>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "portable/text/NumberText.h"

namespace zu::component {

using com::Bstr;
using com::Check;
using com::Variant;

namespace {

/// Longest decimal text of a double, with room for the places behind the point.
constexpr unsigned kLongestNumber = 360;
constexpr LONG kMostDecimals = 30;

std::wstring FixedDouble(double value, unsigned decimals) {
    std::array<char, kLongestNumber> digits{};
    if (!text::PrintNumber(value, kLongestNumber, decimals, digits.data()))
        return Variant(value).ToText().str();
    const auto* const end = digits.cend();
    const auto* const first = std::find_if(digits.cbegin(), end, [](char c) { return c != ' '; });
    return std::wstring(first, end);
}

std::wstring FixedDecimal(const DECIMAL& value, unsigned decimals) {
    DECIMAL rounded = value;
    if (value.scale > decimals) Check(VarDecRound(&rounded, static_cast<int>(decimals), &rounded));
    Bstr digits;
    Check(VarBstrFromDec(&rounded, LOCALE_INVARIANT, 0, digits.put()));
    std::wstring result = digits.str();
    const auto point = result.find(L'.');
    const std::size_t places = point == std::wstring::npos ? 0 : result.size() - point - 1;
    if (places < decimals) {
        if (point == std::wstring::npos) result += L'.';
        result.append(decimals - places, L'0');
    }
    return result;
}

std::wstring Fixed(const VARIANT& value, std::size_t decimals) {
    const auto places = static_cast<unsigned>(std::min<std::size_t>(decimals, kMostDecimals));
    if (value.vt == VT_DECIMAL) return FixedDecimal(value.decVal, places);
    return FixedDouble(com::Convert(value, VT_R8)->dblVal, places);
}

std::wstring CurrencyText(const VARIANT& value) {
    VARIANT amount = value;
    Bstr text;
    Check(VarFormatCurrency(&amount, -1, -2, -2, -2, 0, text.put()));
    return text.str();
}

std::wstring PlainText(const VARIANT& value) {
    if (value.vt == VT_BSTR) return std::wstring(com::View(value.bstrVal));
    if (value.vt == VT_DATE) {
        Bstr text;
        Check(VarBstrFromDate(value.date, LOCALE_USER_DEFAULT, 0, text.put()));
        return text.str();
    }
    if (value.vt & VT_ARRAY) return L"(binary)";
    return com::Convert(value, VT_BSTR).ToText().str();
}

bool HasNoText(const VARIANT& value) noexcept {
    return value.vt == VT_NULL || value.vt == VT_EMPTY;
}

}  // namespace

std::wstring FixedFormat(LONG decimals) {
    return L"0." + std::wstring(static_cast<std::size_t>(std::clamp<LONG>(decimals, 0, kMostDecimals)), L'0');
}

std::wstring CellText(const VARIANT& value, std::wstring_view format) {
    const VARIANT& content = com::Dereference(value);
    if (HasNoText(content)) return {};
    if (format == kCurrencyFormat) return CurrencyText(content);
    if (format.starts_with(L"0.")) return Fixed(content, format.size() - 2);
    return PlainText(content);
}

std::wstring EditText(const VARIANT& value, std::wstring_view format) {
    const VARIANT& content = com::Dereference(value);
    if (HasNoText(content)) return {};
    return format == kCurrencyFormat ? PlainText(content) : CellText(content, format);
}

}  // namespace zu::component
