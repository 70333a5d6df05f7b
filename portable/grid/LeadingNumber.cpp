#include "portable/grid/LeadingNumber.h"

#include <charconv>
#include <limits>
#include <string>

namespace zu::grid {

namespace {

bool IsPassedOver(char16_t character) noexcept {
    return character == u' ' || character == u'\t' || character == u'\r' || character == u'\n';
}

/// The text without blanks; characters beyond ASCII end every number, so one stands for all of them.
std::string Condensed(std::u16string_view text) {
    std::string result;
    for (const char16_t character : text)
        if (!IsPassedOver(character)) result += character < 0x80 ? static_cast<char>(character) : '?';
    return result;
}

bool IsDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

/// The decimal number at the front, in the form that from_chars reads; `used` counts what it took.
std::string DecimalAtFront(const std::string& text, std::size_t& used) {
    std::string number;
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        if (text[at] == '-') number += '-';
        ++at;
    }
    bool digits = false;
    bool point = false;
    for (; at < text.size() && (IsDigit(text[at]) || (text[at] == '.' && !point)); ++at) {
        digits = digits || IsDigit(text[at]);
        point = point || text[at] == '.';
        number += text[at];
    }
    used = digits ? at : 0;
    if (!digits) return {};
    if (at < text.size() && std::string_view("EeDd").find(text[at]) != std::string_view::npos) {
        std::size_t end = at + 1;
        std::string exponent = "e";
        if (end < text.size() && (text[end] == '+' || text[end] == '-')) exponent += text[end++];
        const std::size_t first = end;
        while (end < text.size() && IsDigit(text[end]))
            exponent += text[end++];
        if (end > first) {
            number += exponent;
            used = end;
        }
    }
    return number;
}

double Decimal(const std::string& number) {
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc::result_out_of_range) return value;
    const bool tiny = number.find("e-") != std::string::npos;
    const double limit = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    return number.front() == '-' ? -limit : limit;
}

/// "&HFF" and "&O17": digits of another base; nothing when the text does not begin so.
bool ReadBased(const std::string& text, LeadingNumber& out) {
    if (text.size() < 2 || text[0] != '&') return false;
    const char mark = static_cast<char>(text[1] | 0x20);
    if (mark != 'h' && mark != 'o') return false;
    unsigned long long value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data() + 2, end, value, mark == 'h' ? 16 : 8);
    if (read.ec == std::errc()) out = {static_cast<double>(value), read.ptr == end};
    return true;
}

}  // namespace

LeadingNumber ReadLeadingNumber(std::u16string_view text) {
    const std::string condensed = Condensed(text);
    LeadingNumber result;
    if (ReadBased(condensed, result)) return result;
    std::size_t used = 0;
    const std::string number = DecimalAtFront(condensed, used);
    if (!number.empty()) result = {Decimal(number), used == condensed.size()};
    return result;
}

}  // namespace zu::grid
