#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zu::technologies {

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
    LongText = 100,
    Binary = 0x2011  ///< an array of bytes
};

/// A decimal number: sign, 96-bit integer, decimal places (the form of automation decimals).
struct Decimal {
    std::uint64_t low = 0;
    std::uint32_t high = 0;
    std::uint8_t scale = 0;  ///< 0 to 28
    bool negative = false;
    bool operator==(const Decimal&) const = default;
};

/// The value of one field of one record, as tables hand it out and take it.
///
/// `kind` says which member counts. Reading into the same object again reuses its buffers.
struct Value {
    enum class Kind : std::uint8_t {
        Null,      ///< no value
        Boolean,   ///< `boolean`
        Integer,   ///< `integer`
        Double,    ///< `number`
        Currency,  ///< `integer`, units of 1/10000
        Decimal,   ///< `decimal`
        DateTime,  ///< `julianDay`, `milliseconds`
        Text,      ///< `text`, UTF-16
        Binary     ///< `binary`
    };

    Kind kind = Kind::Null;
    bool boolean = false;
    std::int64_t integer = 0;
    double number = 0;
    Decimal decimal;
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;  ///< since midnight
    std::u16string text;
    std::vector<std::uint8_t> binary;
};

}  // namespace zu::technologies
