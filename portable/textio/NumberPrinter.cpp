#include "portable/textio/NumberPrinter.h"

#include <charconv>
#include <cmath>
#include <cstdint>

#include "portable/error/Error.h"

namespace zu::textio {

namespace {

constexpr std::array<std::uint64_t, 19> kPowers = {1ULL,
                                                   10ULL,
                                                   100ULL,
                                                   1000ULL,
                                                   10000ULL,
                                                   100000ULL,
                                                   1000000ULL,
                                                   10000000ULL,
                                                   100000000ULL,
                                                   1000000000ULL,
                                                   10000000000ULL,
                                                   100000000000ULL,
                                                   1000000000000ULL,
                                                   10000000000000ULL,
                                                   100000000000000ULL,
                                                   1000000000000000ULL,
                                                   10000000000000000ULL,
                                                   100000000000000000ULL,
                                                   1000000000000000000ULL};

/// Places of a currency value.
constexpr std::uint8_t kCurrencyScale = 4;
/// Floating-point values print plainly while the point stands in this range of the digits.
constexpr int kFirstPlainPoint = -4;
constexpr int kLastPlainPoint = 15;

std::uint64_t Magnitude(std::int64_t value) noexcept {
    return value < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(value)
                     : static_cast<std::uint64_t>(value);
}

/// A value that is a whole number of decimal units.
struct Units {
    std::uint64_t units;
    unsigned scale;
};

bool IsUnits(const Cell& cell, Units& out) noexcept {
    switch (cell.kind) {
        case Cell::Kind::Boolean:
        case Cell::Kind::Integer:
            out = {Magnitude(cell.integer), 0};
            return true;
        case Cell::Kind::Decimal:
            out = {Magnitude(cell.integer), cell.scale};
            return cell.scale < kPowers.size();
        case Cell::Kind::Currency:
            out = {Magnitude(cell.integer), kCurrencyScale};
            return true;
        default:
            return false;
    }
}

/// Writes the digits of `value` before `end`; answers the first.
char* PrintBackwards(std::uint64_t value, char* end) noexcept {
    do {
        *--end = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    return end;
}

/// The same for units with `scale` places, at least one digit before the point.
char* PrintBackwards(std::uint64_t units, unsigned scale, char* end) noexcept {
    if (scale == 0) return PrintBackwards(units, end);
    for (unsigned place = 0; place < scale; ++place) {
        *--end = static_cast<char>('0' + units % 10);
        units /= 10;
    }
    *--end = '.';
    return PrintBackwards(units, end);
}

[[noreturn]] void RefuseNumber() {
    throw Error(ErrorKind::TypeMismatch, "The value is no number that can be written");
}

}  // namespace

bool IsNegative(const Cell& number) noexcept {
    switch (number.kind) {
        case Cell::Kind::Single:
        case Cell::Kind::Double:
            return number.number < 0;
        case Cell::Kind::WideDecimal:
            return number.decimal->negative && (number.decimal->low != 0 || number.decimal->high != 0);
        default:
            return number.integer < 0;
    }
}

NumberPrinter::Digits NumberPrinter::Normal(char* first, char* last, int point) const noexcept {
    while (first != last && *first == '0') {
        ++first;
        --point;
    }
    while (first != last && last[-1] == '0')
        --last;
    if (first == last) point = 0;
    return {{first, static_cast<std::size_t>(last - first)}, point};
}

NumberPrinter::Digits NumberPrinter::DigitsOf(const Cell& number) {
    char* const begin = buffer_.data();
    char* const end = begin + buffer_.size();
    Units units{};
    if (IsUnits(number, units)) {
        char* const first = PrintBackwards(units.units, end);
        return Normal(first, end, static_cast<int>(end - first) - static_cast<int>(units.scale));
    }
    if (number.kind == Cell::Kind::WideDecimal) {
        const text::DecimalDigits& decimal = *number.decimal;
        std::array<std::uint32_t, 3> limbs = {static_cast<std::uint32_t>(decimal.low),
                                              static_cast<std::uint32_t>(decimal.low >> 32), decimal.high};
        char* first = end;
        while (limbs[0] != 0 || limbs[1] != 0 || limbs[2] != 0) {
            std::uint64_t remainder = 0;
            for (std::size_t i = limbs.size(); i-- > 0;) {
                const std::uint64_t part = (remainder << 32) | limbs[i];
                limbs[i] = static_cast<std::uint32_t>(part / 10);
                remainder = part % 10;
            }
            *--first = static_cast<char>('0' + remainder);
        }
        return Normal(first, end, static_cast<int>(end - first) - decimal.scale);
    }
    if (number.kind != Cell::Kind::Single && number.kind != Cell::Kind::Double) RefuseNumber();
    if (!std::isfinite(number.number)) RefuseNumber();
    const double magnitude = std::fabs(number.number);
    const auto printed =
        number.kind == Cell::Kind::Single
            ? std::to_chars(begin, end, static_cast<float>(magnitude), std::chars_format::scientific)
            : std::to_chars(begin, end, magnitude, std::chars_format::scientific);
    // d.ddde+xx: the digits move together and the exponent says where the point stands.
    char* last = begin + 1;
    char* at = begin + 1;
    if (*at == '.') {
        for (++at; *at != 'e'; ++at)
            *last++ = *at;
    }
    ++at;
    if (*at == '+') ++at;
    int exponent = 0;
    std::from_chars(at, printed.ptr, exponent);
    return Normal(begin, last, exponent + 1);
}

std::string_view NumberPrinter::Plain(const Digits& digits) {
    text_.clear();
    const auto count = static_cast<int>(digits.digits.size());
    if (digits.point <= 0) {
        text_ = count == 0 ? "0" : "0.";
        text_.append(static_cast<std::size_t>(-digits.point), '0');
        text_ += digits.digits;
    } else if (count <= digits.point) {
        text_ += digits.digits;
        text_.append(static_cast<std::size_t>(digits.point - count), '0');
    } else {
        const auto whole = static_cast<std::size_t>(digits.point);
        text_ += digits.digits.substr(0, whole);
        text_ += '.';
        text_ += digits.digits.substr(whole);
    }
    return text_;
}

std::string_view NumberPrinter::Scientific(const Digits& digits) {
    text_ = digits.digits.substr(0, 1);
    if (digits.digits.size() > 1) {
        text_ += '.';
        text_ += digits.digits.substr(1);
    }
    int exponent = digits.point - 1;
    text_ += exponent < 0 ? "E-" : "E+";
    if (exponent < 0) exponent = -exponent;
    if (exponent < 10) text_ += '0';
    text_ += std::to_string(exponent);
    return text_;
}

std::string_view NumberPrinter::General(const Cell& number) {
    Units units{};
    if (IsUnits(number, units)) {
        while (units.scale > 0 && units.units % 10 == 0) {
            units.units /= 10;
            --units.scale;
        }
        char* const end = buffer_.data() + buffer_.size();
        const char* const first = PrintBackwards(units.units, units.scale, end);
        return {first, static_cast<std::size_t>(end - first)};
    }
    const Digits digits = DigitsOf(number);
    const bool plain = number.kind == Cell::Kind::WideDecimal || digits.digits.empty() ||
                       (digits.point >= kFirstPlainPoint && digits.point <= kLastPlainPoint);
    return plain ? Plain(digits) : Scientific(digits);
}

std::string_view NumberPrinter::Rounded(const Digits& digits, std::size_t decimals, bool point) {
    // One digit more in front, for a carry: 9.99 to one place is 10.0.
    const std::size_t whole = digits.point > 0 ? static_cast<std::size_t>(digits.point) : 0;
    const std::size_t kept = whole + decimals;
    const std::size_t zeros = digits.point < 0 ? static_cast<std::size_t>(-digits.point) : 0;
    text_.assign(1 + kept + 1, '0');
    for (std::size_t i = 0; i < digits.digits.size() && zeros + i <= kept; ++i)
        text_[1 + zeros + i] = digits.digits[i];
    const bool up = text_.back() >= '5';
    text_.pop_back();
    if (up) {
        std::size_t at = text_.size() - 1;
        while (text_[at] == '9')
            text_[at--] = '0';
        ++text_[at];
    }
    // A whole part keeps one digit at least.
    if (whole > 0 && text_.front() == '0') text_.erase(0, 1);
    if (decimals > 0 || point) text_.insert(text_.size() - decimals, 1, '.');
    return text_;
}

std::string_view NumberPrinter::Masked(const Cell& number, std::size_t decimals, bool point) {
    Units units{};
    if (IsUnits(number, units) && decimals <= units.scale) {
        const std::uint64_t divisor = kPowers[units.scale - decimals];
        std::uint64_t rounded = units.units / divisor;
        if (units.units % divisor >= (divisor + 1) / 2 && divisor > 1) ++rounded;
        char* end = buffer_.data() + buffer_.size();
        if (decimals == 0 && point) *--end = '.';
        const char* const first = PrintBackwards(rounded, static_cast<unsigned>(decimals), end);
        return {first, static_cast<std::size_t>(buffer_.data() + buffer_.size() - first)};
    }
    return Rounded(DigitsOf(number), decimals, point);
}

}  // namespace zu::textio
