#include "component/ui/TypedValue.h"

#include <array>
#include <cmath>

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/NumericConversion.h"
#include "component/ui/FieldType.h"
#include "portable/grid/LeadingNumber.h"

namespace zu::component {

using com::Bstr;
using com::Variant;

namespace {

bool IsBlank(std::wstring_view text) noexcept {
    return text.find_first_not_of(L' ') == std::wstring_view::npos;
}

/// The text with a decimal point where the user writes a comma.
std::wstring WithDecimalPoint(std::wstring_view text) {
    std::array<wchar_t, 8> separator{};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator.data(),
                   static_cast<int>(separator.size()));
    std::wstring result(text);
    const auto comma = result.find(separator.front());
    if (separator.front() == L',' && comma != std::wstring::npos && result.find(L'.') == std::wstring::npos)
        result[comma] = L'.';
    return result;
}

Variant FromFloat(float number) {
    VARIANT value{};
    value.vt = VT_R4;
    value.fltVal = number;
    return Variant(value);
}

Variant FromCurrency(CY number) {
    VARIANT value{};
    value.vt = VT_CY;
    value.cyVal = number;
    return Variant(value);
}

Variant FromDecimal(const DECIMAL& number) {
    VARIANT value{};
    value.decVal = number;
    value.vt = VT_DECIMAL;
    return Variant(value);
}

TypedValue LeadingValue(std::wstring_view text, LONG type) {
    const std::wstring plain = WithDecimalPoint(text);
    const grid::LeadingNumber number = grid::ReadLeadingNumber(com::AsUtf16(plain));
    TypedValue result;
    if (std::isinf(number.value)) throw com::ComError(com::kOverflow, L"Overflow");
    const Variant value(number.value);
    switch (type) {
        case kIntegerField:
            result.value = Variant(ToInteger(value));
            break;
        case kLongField:
            result.value = Variant(ToLong(value));
            break;
        case kSingleField:
            result.value = FromFloat(ToSingle(value));
            break;
        default:
            result.value = value;
    }
    if (!number.whole && !IsBlank(text))
        result.note = L"\u201c" + std::wstring(text) + L"\u201d was read as " + value.ToText().str() + L".";
    return result;
}

TypedValue DateValue(std::wstring_view text) {
    if (IsBlank(text)) return {Variant::Null(), {}};
    const Bstr source(text);
    DATE date = 0;
    if (FAILED(VarDateFromStr(source.get(), LOCALE_USER_DEFAULT, 0, &date)))
        return {Variant::Null(),
                L"\u201c" + std::wstring(text) + L"\u201d is no date; the field is empty now."};
    VARIANT value{};
    value.vt = VT_DATE;
    value.date = date;
    return {Variant(value), {}};
}

TypedValue ByteValue(std::wstring_view text) {
    TypedValue none{Variant(), L"This field takes a whole number from 0 to 255."};
    double number = 0;
    try {
        number = std::trunc(com::Convert(Variant(WithDecimalPoint(text)), VT_R8)->dblVal);
    } catch (const com::ComError&) {
        return none;
    }
    if (!(number >= 0 && number <= 255)) return none;
    VARIANT value{};
    value.vt = VT_UI1;
    value.bVal = static_cast<BYTE>(number);
    return {Variant(value), {}};
}

}  // namespace

TypedValue ToTypedValue(std::wstring_view text, LONG type) {
    switch (type) {
        case kNullField:
            return {text.empty() ? Variant::Null() : Variant(), {}};
        case kIntegerField:
        case kLongField:
        case kSingleField:
        case kDoubleField:
            return LeadingValue(text, type);
        case kCurrencyField:
            return {FromCurrency(ToCurrency(Variant(WithDecimalPoint(text)))), {}};
        case kDecimalField:
            return {FromDecimal(ToDecimal(Variant(WithDecimalPoint(text)))), {}};
        case kDateField:
            return DateValue(text);
        case kTextField:
        case kLongTextField:
            return {Variant(text), {}};
        case kBooleanField:
            return {Variant(Engine().data().ToBoolean(Variant(text))), {}};
        case kByteField:
            return ByteValue(text);
        default:
            return {};
    }
}

}  // namespace zu::component
