#include "portable/textio/CellReader.h"

#include <cstddef>
#include <cstdint>

#include "portable/calendar/Calendar.h"

namespace zu::textio {

namespace {

/// So many digits survive the way through a double unchanged, which other tokens take.
constexpr std::size_t kMostDigits = 15;
/// Automation dates begin with the year 100.
constexpr int kFirstYear = 100;

/// A sign, digits, and a point with digits around it.
bool ReadDecimal(std::string_view text, Cell& cell) noexcept {
    const std::size_t last = text.find_last_not_of(' ');
    if (last == std::string_view::npos) {
        cell = Cell::OfDecimal(0, 0);
        return true;
    }
    const std::size_t first = text.find_first_not_of(' ');
    text = text.substr(first, last - first + 1);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text.remove_prefix(1);
    std::int64_t units = 0;
    std::size_t digits = 0;
    std::size_t places = 0;
    bool point = false;
    for (const char c : text) {
        if (c == '.' && !point) {
            point = true;
            continue;
        }
        if (c < '0' || c > '9' || ++digits > kMostDigits) return false;
        units = units * 10 + (c - '0');
        places += point ? 1 : 0;
    }
    if (digits == 0) return false;
    cell = Cell::OfDecimal(negative ? -units : units, static_cast<std::uint8_t>(places));
    return true;
}

}  // namespace

bool CellReader::ReadDigits(std::string_view token, Cell& cell) noexcept {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const char* at = token.data();
    const char* const end = at + token.size();
    while (at != end && *at == ' ')
        ++at;
    const char* const begin = at;
    const bool negative = at != end && *at == '-';
    if (negative) ++at;
    const char* const whole = at;
    bool zero = true;
    for (; at != end && isDigit(*at); ++at)
        zero = zero && *at == '0';
    if (at == whole || (*whole == '0' && at - whole > 1)) return false;
    auto digits = at - whole;
    std::ptrdiff_t scale = 0;
    if (at != end) {
        if (*at != '.') return false;
        const char* const fraction = ++at;
        for (; at != end && isDigit(*at); ++at)
            zero = zero && *at == '0';
        scale = at - fraction;
        digits += scale;
        if (at != end || scale == 0) return false;
    }
    if (digits > static_cast<std::ptrdiff_t>(kMostDigits) || (negative && zero)) return false;
    cell = Cell::OfDigits({begin, static_cast<std::size_t>(end - begin)}, static_cast<std::uint8_t>(scale));
    return true;
}

bool CellReader::Read(const ImportField& field, std::string_view token, Cell& cell) {
    if (static_cast<FieldType>(field.type) == FieldType::Decimal) return ReadDecimal(token, cell);
    using Kind = ReadValue<char>::Kind;
    const ReadValue<char> value = reader_.Read<char>(field, token);
    switch (value.kind) {
        case Kind::Text:
        case Kind::Truth:
            cell = Cell::OfBytes(value.text);
            return true;
        case Kind::Integer32:
            cell = Cell::OfInteger(value.integer);
            return true;
        case Kind::Double:
            cell = Cell::OfNumber(value.number);
            return static_cast<FieldType>(field.type) == FieldType::Double;
        case Kind::Date:
            cell = Cell::OfDate(value.integer);
            return value.integer >= calendar::ToJulianDay({kFirstYear, 1, 1});
        case Kind::NoDate:
            cell = Cell();
            return true;
        default:
            return false;
    }
}

}  // namespace zu::textio
