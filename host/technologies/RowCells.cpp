#include "host/technologies/RowCells.h"

#include <limits>

#include "portable/calendar/Calendar.h"

namespace zu::technologies {

namespace {

using textio::Cell;

/// Automation dates begin with the year 100; earlier ones are shown as Null.
const std::int32_t kFirstDay = calendar::ToJulianDay({100, 1, 1});
constexpr std::uint8_t kMostShortPlaces = 18;

}  // namespace

bool RowCells::Add(const Value& value, FieldType type) {
    switch (value.kind) {
        case Value::Kind::Null:
            Add(Cell());
            return true;
        case Value::Kind::Boolean:
            Add(Cell::OfBoolean(value.boolean));
            return true;
        case Value::Kind::Integer:
            Add(Cell::OfInteger(value.integer));
            return true;
        case Value::Kind::Double:
            if (type == FieldType::Single) {
                Add(Cell::OfNumber(static_cast<double>(static_cast<float>(value.number)),
                                   Cell::Kind::Single));
            } else {
                Add(Cell::OfNumber(value.number));
            }
            return true;
        case Value::Kind::Currency:
            Add(Cell::OfInteger(value.integer, Cell::Kind::Currency));
            return true;
        case Value::Kind::Decimal: {
            const Decimal& decimal = value.decimal;
            constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
            if (decimal.high == 0 && decimal.low <= kMost && decimal.scale <= kMostShortPlaces) {
                const auto units = static_cast<std::int64_t>(decimal.low);
                Add(Cell::OfDecimal(decimal.negative ? -units : units, decimal.scale));
                return true;
            }
            if (usedDecimals_ == decimals_.size()) decimals_.emplace_back();
            text::DecimalDigits& wide = decimals_[usedDecimals_++];
            wide = {decimal.low, decimal.high, decimal.scale, decimal.negative};
            Add(Cell::OfDecimal(wide));
            return true;
        }
        case Value::Kind::DateTime:
            Add(value.julianDay < kFirstDay ? Cell() : Cell::OfDate(value.julianDay, value.milliseconds));
            return true;
        case Value::Kind::Text: {
            if (usedTexts_ == texts_.size()) texts_.emplace_back();
            std::u16string& text = texts_[usedTexts_++];
            text = value.text;
            Add(Cell::OfCharacters(text));
            return true;
        }
        case Value::Kind::Binary:
            break;
    }
    return false;
}

}  // namespace zu::technologies
