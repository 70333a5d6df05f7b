#include "component/textio/FieldCells.h"

#include <limits>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/Utf.h"

namespace zu::component {

using com::Bstr;
using com::Check;
using com::ComPtr;
using com::Variant;
using textio::Cell;

namespace {

/// Decimals with more places do not fit the short form.
constexpr BYTE kMostShortPlaces = 18;

textio::ExportField Describe(ZuDataField& field) {
    Bstr name;
    Check(field.get_Name(name.put()));
    textio::ExportField description;
    description.name = text::ToUtf8(com::AsUtf16(name.view()));
    LONG number = 0;
    Check(field.get_Type(&number));
    description.type = number;
    Check(field.get_Size(&number));
    description.size = number;
    if (description.type == static_cast<int>(textio::FieldType::Decimal)) {
        Check(field.get_Decimals(&number));
        description.decimals = number;
    }
    return description;
}

bool IsNothing(VARTYPE type) noexcept {
    return type == VT_NULL || type == VT_EMPTY || type == VT_ERROR;
}

}  // namespace

FieldCells::FieldCells(DataView& view) {
    const LONG count = view.FieldCount();
    for (LONG position = 0; position < count; ++position) {
        fields_.push_back(view.Field(Variant(position)));
        descriptions_.push_back(Describe(*fields_.back()));
    }
    values_.resize(fields_.size());
    texts_.resize(fields_.size());
    decimals_.resize(fields_.size());
}

Cell FieldCells::Read(std::size_t field) {
    Check(fields_[field]->get_Value(values_[field].put()));
    const VARIANT& value = com::Dereference(values_[field]);
    if (IsNothing(value.vt)) return Cell();
    const int type = descriptions_[field].type;
    switch (static_cast<textio::FieldType>(type)) {
        case textio::FieldType::Boolean:
            return Cell::OfBoolean(Variant(value).ToBoolean());
        case textio::FieldType::Date:
            return DateCell(value);
        case textio::FieldType::Integer16:
        case textio::FieldType::Integer32:
        case textio::FieldType::Single:
        case textio::FieldType::Double:
        case textio::FieldType::Currency:
        case textio::FieldType::Decimal:
        case textio::FieldType::Byte:
            return NumberCell(value, type, field);
        case textio::FieldType::Text:
        case textio::FieldType::LongText:
            break;
    }
    return TextCell(value, field);
}

Cell FieldCells::NumberCell(const VARIANT& value, int type, std::size_t field) {
    switch (value.vt) {
        case VT_I2:
            return Cell::OfInteger(value.iVal);
        case VT_I4:
            return Cell::OfInteger(value.lVal);
        case VT_UI1:
            return Cell::OfInteger(value.bVal);
        case VT_BOOL:
            return Cell::OfInteger(value.boolVal);
        case VT_R4:
            return Cell::OfNumber(static_cast<double>(value.fltVal), Cell::Kind::Single);
        case VT_R8: {
            const bool single = type == static_cast<int>(textio::FieldType::Single);
            return Cell::OfNumber(value.dblVal, single ? Cell::Kind::Single : Cell::Kind::Double);
        }
        case VT_CY:
            return Cell::OfInteger(value.cyVal.int64, Cell::Kind::Currency);
        case VT_DECIMAL:
            return DecimalCell(value, field);
        case VT_DATE:
            return Cell::OfNumber(value.date);
        default:
            // Texts and rarer numbers: the widest of the exact types decides.
            if (type == static_cast<int>(textio::FieldType::Single) ||
                type == static_cast<int>(textio::FieldType::Double))
                return Cell::OfNumber(Variant(value).ToDouble());
            values_[field] = com::Convert(value, VT_DECIMAL);
            return DecimalCell(values_[field], field);
    }
}

Cell FieldCells::DecimalCell(const VARIANT& value, std::size_t field) {
    const DECIMAL& decimal = value.decVal;
    const bool negative = (decimal.sign & DECIMAL_NEG) != 0;
    constexpr auto kMost = static_cast<ULONGLONG>(std::numeric_limits<std::int64_t>::max());
    if (decimal.Hi32 == 0 && decimal.Lo64 <= kMost && decimal.scale <= kMostShortPlaces) {
        const auto units = static_cast<std::int64_t>(decimal.Lo64);
        return Cell::OfDecimal(negative ? -units : units, decimal.scale);
    }
    decimals_[field] = {decimal.Lo64, decimal.Hi32, decimal.scale, negative};
    return Cell::OfDecimal(decimals_[field]);
}

Cell FieldCells::TextCell(const VARIANT& value, std::size_t field) {
    if (const auto text = com::TextOf(value)) return Cell::OfCharacters(com::AsUtf16(*text));
    texts_[field] = Variant(value).ToText();
    return Cell::OfCharacters(com::AsUtf16(texts_[field].view()));
}

Cell FieldCells::DateCell(const VARIANT& value) {
    const double date = value.vt == VT_DATE ? value.date : com::Convert(value, VT_DATE)->date;
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;
    calendar::FromAutomationDate(date, julianDay, milliseconds);
    return Cell::OfInteger(julianDay, Cell::Kind::Date);
}

}  // namespace zu::component
