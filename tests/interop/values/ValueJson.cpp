#include "tests/interop/values/ValueJson.h"

#include <cstdint>
#include <cstdio>

#include "portable/calendar/Calendar.h"
#include "portable/text/Utf.h"

namespace zu::interop {

namespace {

/// The digits of a 96-bit number, by long division in base 10^9 over its three 32-bit words.
std::string Digits(std::uint32_t high, std::uint64_t low) {
    std::uint32_t words[3] = {high, static_cast<std::uint32_t>(low >> 32), static_cast<std::uint32_t>(low)};
    std::string digits;
    while (words[0] != 0 || words[1] != 0 || words[2] != 0) {
        std::uint64_t rest = 0;
        for (std::uint32_t& word : words) {
            const std::uint64_t part = (rest << 32) | word;
            word = static_cast<std::uint32_t>(part / 10);
            rest = part % 10;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + rest));
    }
    return digits;
}

std::string WithPoint(std::string digits, std::size_t scale, bool negative) {
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    if (scale > 0) digits.insert(digits.size() - scale, ".");
    return negative ? "-" + digits : digits;
}

template <typename... Arguments>
void AppendFormatted(std::string& out, const char* format, Arguments... arguments) {
    char text[80];
    const int length = std::snprintf(text, sizeof text, format, arguments...);
    out.append(text, static_cast<std::size_t>(length));
}

void AppendDate(const technologies::Value& value, std::string& out) {
    const calendar::Date date = calendar::FromJulianDay(value.julianDay);
    const int seconds = value.milliseconds / 1000;
    AppendFormatted(out, "\"%04d-%02d-%02d %02d:%02d:%02d.%03d\"", date.year, date.month, date.day,
                    seconds / 3600, seconds / 60 % 60, seconds % 60,
                    static_cast<int>(value.milliseconds % 1000));
}

void AppendHex(const std::vector<std::uint8_t>& bytes, std::string& out) {
    out += "{\"hex\":\"";
    for (const std::uint8_t byte : bytes)
        AppendFormatted(out, "%02x", static_cast<unsigned>(byte));
    out += "\"}";
}

}  // namespace

void AppendJsonText(std::string_view utf8, std::string& out) {
    out += '"';
    for (const char character : utf8) {
        if (character == '"' || character == '\\') {
            out += '\\';
            out += character;
        } else if (static_cast<unsigned char>(character) < 0x20) {
            AppendFormatted(out, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(character)));
        } else {
            out += character;
        }
    }
    out += '"';
}

void AppendJsonValue(const technologies::Value& value, std::string& out) {
    using Kind = technologies::Value::Kind;
    switch (value.kind) {
        case Kind::Null:
            out += "null";
            break;
        case Kind::Boolean:
            out += value.boolean ? "true" : "false";
            break;
        case Kind::Integer:
            out += std::to_string(value.integer);
            break;
        case Kind::Double:
            AppendFormatted(out, "%.17g", value.number);
            break;
        case Kind::Currency: {
            const bool negative = value.integer < 0;
            const auto units = static_cast<std::uint64_t>(value.integer);
            out += '"' + WithPoint(Digits(0, negative ? 0 - units : units), 4, negative) + '"';
            break;
        }
        case Kind::Decimal:
            out += '"' +
                   WithPoint(Digits(value.decimal.high, value.decimal.low), value.decimal.scale,
                             value.decimal.negative) +
                   '"';
            break;
        case Kind::DateTime:
            AppendDate(value, out);
            break;
        case Kind::Text:
            AppendJsonText(text::ToUtf8(value.text), out);
            break;
        case Kind::Binary:
            AppendHex(value.binary, out);
            break;
    }
}

}  // namespace zu::interop
