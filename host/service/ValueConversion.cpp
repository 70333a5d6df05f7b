#include "host/service/ValueConversion.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/ScriptNumber.h"
#include "host/engine/DefaultValue.h"
#include "host/engine/TruthValue.h"
#include "portable/calendar/Calendar.h"
#include "portable/error/Error.h"

namespace zu::host {
namespace {

using technologies::FieldType;
using technologies::Value;

/// Midnight of 1 January 100, where automation dates begin.
constexpr double kFirstDate = -657434.0;

com::Variant Scalar(VARTYPE type) {
    VARIANT value;
    VariantInit(&value);
    value.vt = type;
    return com::Variant::Adopt(value);
}

com::Variant FromInteger(std::int64_t integer, FieldType type) {
    com::Variant result = Scalar(VT_I4);
    VARIANT& value = *result.address();
    if (type == FieldType::Integer16 && integer == static_cast<SHORT>(integer)) {
        value.vt = VT_I2;
        value.iVal = static_cast<SHORT>(integer);
    } else if (type == FieldType::Byte && integer == static_cast<BYTE>(integer)) {
        value.vt = VT_UI1;
        value.bVal = static_cast<BYTE>(integer);
    } else if (integer == static_cast<LONG>(integer)) {
        value.lVal = static_cast<LONG>(integer);
    } else {
        value.vt = VT_R8;
        value.dblVal = static_cast<double>(integer);
    }
    return result;
}

com::Variant FromNumber(double number, FieldType type) {
    if (type != FieldType::Single) return com::Variant(number);
    com::Variant result = Scalar(VT_R4);
    result.address()->fltVal = static_cast<float>(number);
    return result;
}

com::Variant FromDecimal(const technologies::Decimal& decimal) {
    com::Variant result;
    DECIMAL& target = result.address()->decVal;
    target.Hi32 = decimal.high;
    target.Lo64 = decimal.low;
    target.scale = decimal.scale;
    target.sign = decimal.negative ? DECIMAL_NEG : 0;
    // The type lies in the decimal's reserved word.
    result.address()->vt = VT_DECIMAL;
    return result;
}

com::Variant FromDate(std::int32_t julianDay, std::int32_t milliseconds) {
    const double date = calendar::ToAutomationDate(julianDay, milliseconds);
    if (date < kFirstDate) return com::Variant::Null();
    com::Variant result = Scalar(VT_DATE);
    result.address()->date = date;
    return result;
}

com::Variant FromBytes(const std::vector<std::uint8_t>& bytes) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    if (!array) throw std::bad_alloc();
    com::Variant result = Scalar(VT_ARRAY | VT_UI1);
    result.address()->parray = array;
    if (bytes.empty()) return result;
    void* data = nullptr;
    com::Check(SafeArrayAccessData(array, &data));
    std::memcpy(data, bytes.data(), bytes.size());
    com::Check(SafeArrayUnaccessData(array));
    return result;
}

bool IsNothing(const VARIANT& value) noexcept {
    return value.vt == VT_EMPTY || value.vt == VT_NULL || com::IsMissing(value);
}

bool IsBlankText(const VARIANT& value) noexcept {
    const auto text = com::TextOf(value);
    return text && text->find_first_not_of(L" \t\r\n") == std::wstring_view::npos;
}

/// A script's date object has a method that gives an automation date.
com::Variant ScriptDate(const VARIANT& value) {
    const com::ComPtr<IDispatch> object = com::ObjectOf<IDispatch>(value);
    com::Required(object.get());
    std::wstring name = L"getVarDate";
    LPOLESTR names = name.data();
    DISPID id = DISPID_UNKNOWN;
    com::Variant result;
    if (FAILED(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_INVARIANT, &id))) return result;
    DISPPARAMS none{};
    object->Invoke(id, IID_NULL, LOCALE_INVARIANT, DISPATCH_METHOD, &none, result.put(), nullptr, nullptr);
    return result;
}

/// `value` with references looked through and objects replaced by what they stand for.
com::Variant Content(const VARIANT& value) {
    com::Variant content(value);
    if (content.type() != VT_DISPATCH && content.type() != VT_UNKNOWN) return content;
    com::Variant date = ScriptDate(content);
    return date.type() == VT_DATE ? date : DefaultValue(content);
}

std::wstring DateText(double date, const char* dayForm, bool withTime) {
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;
    calendar::FromAutomationDate(date, julianDay, milliseconds);
    const calendar::Date day = calendar::FromJulianDay(julianDay);
    std::array<char, 64> text{};
    int length = std::snprintf(text.data(), text.size(), dayForm, day.year, day.month, day.day);
    if (withTime && milliseconds) {
        const int seconds = milliseconds / 1000;
        length += std::snprintf(text.data() + length, text.size() - static_cast<std::size_t>(length),
                                " %02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
    }
    return {text.data(), text.data() + length};
}

std::u16string TextOfContent(const com::Variant& content, const char* dayForm, bool withTime) {
    if (content.type() == VT_DATE)
        return std::u16string(com::AsUtf16(DateText(content.get().date, dayForm, withTime)));
    if (content.type() == VT_BOOL) return content.get().boolVal ? u"True" : u"False";
    const com::Bstr text = com::Convert(content, VT_BSTR).ToText();
    return std::u16string(com::AsUtf16(text.view()));
}

Value OfKind(Value::Kind kind) {
    Value value;
    value.kind = kind;
    return value;
}

Value IntegerValue(const com::Variant& content, VARTYPE type) {
    Value value = OfKind(Value::Kind::Integer);
    value.integer = com::Convert(com::Convert(content, type), VT_I4).get().lVal;
    return value;
}

Value NumberValue(const com::Variant& content, VARTYPE type) {
    Value value = OfKind(Value::Kind::Double);
    value.number = com::Convert(com::Convert(content, type), VT_R8).get().dblVal;
    return value;
}

Value DecimalValue(const com::Variant& content) {
    Value value = OfKind(Value::Kind::Decimal);
    const com::Variant converted = com::Convert(content, VT_DECIMAL);
    const DECIMAL& decimal = converted.get().decVal;
    value.decimal.high = decimal.Hi32;
    value.decimal.low = decimal.Lo64;
    value.decimal.scale = decimal.scale;
    value.decimal.negative = (decimal.sign & DECIMAL_NEG) != 0;
    return value;
}

Value DateValue(const com::Variant& content) {
    Value value = OfKind(Value::Kind::DateTime);
    const com::Variant date = com::Convert(content, VT_DATE);
    calendar::FromAutomationDate(date.get().date, value.julianDay, value.milliseconds);
    return value;
}

Value BytesValue(const com::Variant& content) {
    if (content.type() != (VT_ARRAY | VT_UI1) || SafeArrayGetDim(content.get().parray) != 1)
        throw com::ComError(com::kTypeMismatch, L"A binary field takes an array of bytes");
    Value value = OfKind(Value::Kind::Binary);
    SAFEARRAY* const array = content.get().parray;
    void* data = nullptr;
    com::Check(SafeArrayAccessData(array, &data));
    const auto* const bytes = static_cast<const std::uint8_t*>(data);
    value.binary.assign(bytes, bytes + array->rgsabound[0].cElements);
    com::Check(SafeArrayUnaccessData(array));
    return value;
}

Value Converted(const VARIANT& source, FieldType type, const char* dayForm, bool withTime) {
    const com::Variant content = Content(source);
    if (IsNothing(content)) return {};
    const bool text = type == FieldType::Text || type == FieldType::LongText;
    if (text) {
        Value value = OfKind(Value::Kind::Text);
        value.text = TextOfContent(content, dayForm, withTime);
        return value;
    }
    if (IsBlankText(content)) return {};
    switch (type) {
        case FieldType::Boolean: {
            Value value = OfKind(Value::Kind::Boolean);
            value.boolean = ToTruthValue(content);
            return value;
        }
        case FieldType::Integer16:
            return IntegerValue(content, VT_I2);
        case FieldType::Byte:
            return IntegerValue(content, VT_UI1);
        case FieldType::Integer32:
            return IntegerValue(content, VT_I4);
        case FieldType::Single:
            return NumberValue(content, VT_R4);
        case FieldType::Double:
            return NumberValue(content, VT_R8);
        case FieldType::Currency: {
            Value value = OfKind(Value::Kind::Currency);
            value.integer = com::Convert(content, VT_CY).get().cyVal.int64;
            return value;
        }
        case FieldType::Decimal:
            return DecimalValue(content);
        case FieldType::Date:
            return DateValue(content);
        case FieldType::Text:
        case FieldType::LongText:
            break;
        case FieldType::Binary:
            return BytesValue(content);
    }
    throw com::ComError(com::kTypeMismatch, L"The value cannot be stored in a field of this type");
}

[[noreturn]] void TooWide(const technologies::FieldDescription& field, const std::string& table,
                          const std::string& what) {
    throw Error(ErrorKind::Overflow, "Field " + field.name + " of table " + table + " (width " +
                                         std::to_string(field.size) + ", " + std::to_string(field.decimals) +
                                         " decimals) cannot hold " + what);
}

void FitText(const Value& value, const technologies::FieldDescription& field, const std::string& table) {
    if (field.type == FieldType::Text && field.size > 0 &&
        value.text.size() > static_cast<std::size_t>(field.size))
        TooWide(field, table, "a text of " + std::to_string(value.text.size()) + " characters");
}

DECIMAL WholeDecimal(std::uint64_t number) {
    DECIMAL result{};
    result.Lo64 = number;
    return result;
}

/// The value in units of the field's last decimal place, halves rounded away from zero: whole, scale 0. The
/// system's own rounding is not used because its treatment of halves is not the same everywhere.
DECIMAL UnitsOf(const technologies::Decimal& value, int decimals) {
    DECIMAL exact{};
    exact.Hi32 = value.high;
    exact.Lo64 = value.low;
    exact.scale = value.scale;
    exact.sign = value.negative ? DECIMAL_NEG : 0;
    std::uint64_t power = 1;
    for (int i = 0; i < decimals; ++i)
        power *= 10;
    DECIMAL factor = WholeDecimal(power);
    DECIMAL half = WholeDecimal(5);
    half.scale = 1;
    half.sign = exact.sign;
    DECIMAL scaled{};
    DECIMAL shifted{};
    DECIMAL units{};
    com::Check(VarDecMul(&exact, &factor, &scaled));
    com::Check(VarDecAdd(&scaled, &half, &shifted));
    com::Check(VarDecFix(&shifted, &units));
    return units;
}

/// Characters of the number with `decimals` places: digits, at least one before the point, point and sign.
std::size_t WidthOf(DECIMAL& units, int decimals) {
    com::Bstr text;
    com::Check(VarBstrFromDec(&units, LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE, text.put()));
    const bool negative = text.view().starts_with(L"-");
    const std::size_t digits = text.view().size() - (negative ? 1 : 0);
    const auto places = static_cast<std::size_t>(decimals);
    return std::max(digits, places + 1) + (places ? 1 : 0) + (negative ? 1 : 0);
}

void FitDecimal(Value& value, const technologies::FieldDescription& field, const std::string& table) {
    constexpr int kMostDecimals = 18;  // a field that shows more has no room for them
    const int decimals = std::clamp(field.decimals, 0, kMostDecimals);
    DECIMAL units{};
    try {
        units = UnitsOf(value.decimal, decimals);
    } catch (const com::ComError&) {
        TooWide(field, table, "a number of more than 28 digits");
    }
    const std::size_t width = WidthOf(units, decimals);
    if (field.size > 0 && width > static_cast<std::size_t>(field.size))
        TooWide(field, table, "a number of " + std::to_string(width) + " characters");
    value.decimal.high = units.Hi32;
    value.decimal.low = units.Lo64;
    value.decimal.scale = static_cast<std::uint8_t>(decimals);
    value.decimal.negative = (units.sign & DECIMAL_NEG) != 0;
}

}  // namespace

com::Variant ToVariant(const Value& value, FieldType type) {
    switch (value.kind) {
        case Value::Kind::Null:
            return com::Variant::Null();
        case Value::Kind::Boolean:
            return com::Variant(value.boolean);
        case Value::Kind::Integer:
            return FromInteger(value.integer, type);
        case Value::Kind::Double:
            return FromNumber(value.number, type);
        case Value::Kind::Currency: {
            com::Variant result = Scalar(VT_CY);
            result.address()->cyVal.int64 = value.integer;
            return result;
        }
        case Value::Kind::Decimal:
            return FromDecimal(value.decimal);
        case Value::Kind::DateTime:
            return FromDate(value.julianDay, value.milliseconds);
        case Value::Kind::Text:
            return com::Variant(com::AsWide(value.text));
        case Value::Kind::Binary:
            return FromBytes(value.binary);
    }
    return com::Variant::Null();
}

Value FromVariant(const VARIANT& value, FieldType type) {
    return Converted(value, type, "%04d-%02d-%02d", true);
}

void FromVariant(const VARIANT& value, FieldType type, Value& out) {
    const VARIANT& content = com::Dereference(value);
    const bool isText = type == FieldType::Text || type == FieldType::LongText;
    if (isText && content.vt == VT_BSTR) {
        out.kind = Value::Kind::Text;
        out.text.assign(com::AsUtf16(com::View(content.bstrVal)));
    } else if (type == FieldType::Double && content.vt == VT_R8) {
        out.kind = Value::Kind::Double;
        out.number = content.dblVal;
    } else if (type == FieldType::Integer32 && content.vt == VT_I4) {
        out.kind = Value::Kind::Integer;
        out.integer = content.lVal;
    } else {
        out = FromVariant(content, type);
    }
}

Value KeyFromVariant(const VARIANT& value, FieldType type) {
    return Converted(value, type, "%04d%02d%02d", false);
}

void TrimToField(Value& value, const technologies::FieldDescription& field) {
    if (value.kind == Value::Kind::Text && field.type == FieldType::Text)
        value.text.resize(value.text.find_last_not_of(u' ') + 1);
    // A field of eight characters holds a day; the time of day has no place there.
    if (value.kind == Value::Kind::DateTime && field.size == 8) value.milliseconds = 0;
}

void FitToField(Value& value, const technologies::FieldDescription& field, const std::string& table) {
    TrimToField(value, field);
    if (value.kind == Value::Kind::Text) FitText(value, field, table);
    if (value.kind == Value::Kind::Decimal) FitDecimal(value, field, table);
}

void MakeUsableForScripts(VARIANT& value) noexcept {
    com::MakeUsableForScripts(value);
}

}  // namespace zu::host
