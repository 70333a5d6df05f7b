#pragma once

#include <cstdint>
#include <string_view>

#include "portable/text/NumberText.h"

namespace zu::textio {

/// Field type codes of the view interface: automation type numbers, and 100 for long text.
enum class FieldType : int {
    Integer16 = 2,
    Integer32 = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    Text = 8,
    Boolean = 11,
    Decimal = 14,
    Byte = 17,
    LongText = 100
};

/// The value of one field on its way into a text file. Texts and wide decimals lie elsewhere and must outlive
/// the cell, so that a run of records costs no allocation.
struct Cell {
    enum class Kind : std::uint8_t {
        Null,         ///< no value
        Boolean,      ///< `integer`, 0 is false
        Integer,      ///< `integer`
        Decimal,      ///< `integer` / 10^`scale`, scale at most 18
        WideDecimal,  ///< `*decimal`
        Currency,     ///< `integer` / 10000
        Single,       ///< `number`, a value of single precision
        Double,       ///< `number`
        Date,   ///< `integer`, a Julian day, and `length` milliseconds since midnight, which no text shows
        Bytes,  ///< `length` bytes at `bytes`, in the code page of the file
        Characters,  ///< `length` UTF-16 units at `characters`
        Digits  ///< the text of a number, `length` bytes at `bytes`, the last `scale` behind a point: see
                ///< OfDigits
    };

    Kind kind = Kind::Null;
    std::uint8_t scale = 0;
    std::uint32_t length = 0;
    union {
        std::int64_t integer = 0;
        double number;
        const text::DecimalDigits* decimal;
        const char* bytes;
        const char16_t* characters;
    };

    static Cell OfBoolean(bool value) noexcept { return OfInteger(value ? 1 : 0, Kind::Boolean); }
    static Cell OfInteger(std::int64_t value, Kind kind = Kind::Integer) noexcept {
        Cell cell;
        cell.kind = kind;
        cell.integer = value;
        return cell;
    }
    static Cell OfDate(std::int32_t julianDay, std::int32_t milliseconds = 0) noexcept {
        Cell cell = OfInteger(julianDay, Kind::Date);
        cell.length = static_cast<std::uint32_t>(milliseconds);
        return cell;
    }
    static Cell OfDecimal(std::int64_t units, std::uint8_t scale) noexcept {
        Cell cell = OfInteger(units, Kind::Decimal);
        cell.scale = scale;
        return cell;
    }
    static Cell OfDecimal(const text::DecimalDigits& decimal) noexcept {
        Cell cell;
        cell.kind = Kind::WideDecimal;
        cell.decimal = &decimal;
        return cell;
    }
    static Cell OfNumber(double value, Kind kind = Kind::Double) noexcept {
        Cell cell;
        cell.kind = kind;
        cell.number = value;
        return cell;
    }
    static Cell OfBytes(std::string_view text) noexcept {
        Cell cell;
        cell.kind = Kind::Bytes;
        cell.length = static_cast<std::uint32_t>(text.size());
        cell.bytes = text.data();
        return cell;
    }
    /// For new records alone. At most 15 digits, no needless zero in front, a minus sign when it is less than
    /// zero, and a point when digits stand behind it.
    static Cell OfDigits(std::string_view text, std::uint8_t scale) noexcept {
        Cell cell = OfBytes(text);
        cell.kind = Kind::Digits;
        cell.scale = scale;
        return cell;
    }
    static Cell OfCharacters(std::u16string_view text) noexcept {
        Cell cell;
        cell.kind = Kind::Characters;
        cell.length = static_cast<std::uint32_t>(text.size());
        cell.characters = text.data();
        return cell;
    }
};

}  // namespace zu::textio
