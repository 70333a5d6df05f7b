#include "host/expression/NumberFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "portable/text/NumberText.h"

namespace zu::expression {

namespace {

constexpr std::size_t kMostDecimals = 18;
constexpr double kExactWhole = 9007199254740992.0;  // 2^53

/// Digits of a number that has no fraction or none that counts; the common case in keys.
bool AppendWhole(double value, std::size_t width, char fill, std::string& out) {
    if (!(std::fabs(value) < kExactWhole) || value != std::trunc(value)) return false;
    std::array<char, 20> digits{};
    const auto whole = static_cast<std::int64_t>(std::fabs(value));
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), whole).ptr;
    const auto count = static_cast<std::size_t>(end - digits.data());
    const bool negative = value < 0;
    const std::size_t needed = count + (negative ? 1 : 0);
    if (needed > width) {
        out.append(width, '*');
        return true;
    }
    if (negative && fill == '0') out.push_back('-');
    out.append(width - needed, fill);
    if (negative && fill != '0') out.push_back('-');
    out.append(digits.data(), count);
    return true;
}

}  // namespace

double RoundDecimal(double value, int places) noexcept {
    if (!std::isfinite(value)) return value;
    // Scaling by a power of ten is off by a bit at times; the shortest form of the number is not.
    std::array<char, 64> text{};
    char* const last = text.data() + text.size();
    const auto written = std::to_chars(text.data(), last, value, std::chars_format::scientific);
    if (written.ec != std::errc()) return value;
    // d.ddddde[+-]xx: the digit at `places` decides.
    char* const exponentMark = std::find(text.data(), written.ptr, 'e');
    int exponent = 0;
    const char* exponentText = exponentMark + 1;
    if (*exponentText == '+') ++exponentText;
    std::from_chars(exponentText, written.ptr, exponent);
    std::array<char, 32> digits{};
    int count = 0;
    for (const char* at = text.data(); at != exponentMark; ++at) {
        if (*at >= '0' && *at <= '9' && count < 30) digits[static_cast<std::size_t>(count++)] = *at;
    }
    const int kept = exponent + 1 + places;  // digits in front of the cut
    if (kept >= count) return value;
    if (kept < 0) return 0;
    const bool up = digits[static_cast<std::size_t>(kept)] >= '5';
    std::uint64_t mantissa = 0;
    for (int i = 0; i < kept; ++i) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(digits[static_cast<std::size_t>(i)] - '0');
    }
    if (up) ++mantissa;
    const bool negative = value < 0;
    std::array<char, 48> decimal{};
    constexpr std::size_t kExponentRoom = 8;
    char* const decimalEnd = decimal.data() + decimal.size();
    const auto number = std::to_chars(decimal.data(), decimalEnd - kExponentRoom, mantissa);
    if (number.ec != std::errc()) return value;
    *number.ptr = 'e';
    const auto power = std::to_chars(number.ptr + 1, decimalEnd, -places);
    double rounded = 0;
    std::from_chars(decimal.data(), power.ptr, rounded);
    return negative ? -rounded : rounded;
}

void AppendStr(double value, std::size_t width, std::size_t decimals, char fill, std::string& out) {
    if (decimals == 0) value = RoundDecimal(value, 0);
    if (decimals == 0 && AppendWhole(value, width, fill, out)) return;
    const std::size_t start = out.size();
    out.append(width, ' ');
    for (std::size_t places = std::min(decimals, kMostDecimals) + 1; places-- > 0;) {
        if (!text::PrintNumber(value, static_cast<unsigned>(width), static_cast<unsigned>(places),
                               &out[start])) {
            continue;
        }
        if (fill == ' ') return;
        const std::size_t first = out.find_first_not_of(' ', start);
        if (out[first] == '-') std::swap(out[first], out[start]);
        std::replace(out.begin() + static_cast<std::ptrdiff_t>(start), out.end(), ' ', fill);
        return;
    }
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(start), out.end(), '*');
}

void AppendShortest(double value, std::string& out) {
    constexpr double kPlainLimit = 1e15;
    constexpr double kPlainSmallest = 1e-6;
    std::array<char, 64> text{};
    const double size = std::fabs(value);
    const bool isPlain = size == 0 || (size < kPlainLimit && size >= kPlainSmallest);
    const auto format = isPlain ? std::chars_format::fixed : std::chars_format::scientific;
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), value == 0 ? 0.0 : value, format);
    out.append(text.data(), written.ptr);
}

}  // namespace zu::expression
