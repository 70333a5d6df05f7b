#include "host/expression/Interval.h"

#include <array>
#include <charconv>

#include "portable/text/NumberText.h"

namespace zu::expression {

namespace {

/// Beyond every field with a kernel (18 digits) and far enough from the ends for the sums of IntervalOf.
constexpr std::int64_t kBeyond = std::int64_t{1} << 62;

std::int64_t SaturatingScale(std::int64_t value, unsigned places) noexcept {
    for (; places > 0 && value != 0; --places) {
        if (value > kBeyond / 10) return kBeyond;
        if (value < -kBeyond / 10) return -kBeyond;
        value *= 10;
    }
    return value;
}

}  // namespace

std::optional<ScaledConstant> ScaleConstant(double value, std::string_view digits, unsigned decimals) {
    std::array<char, 64> buffer{};
    if (digits.empty()) {
        const auto [end, fault] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
        if (fault != std::errc()) return std::nullopt;
        digits = {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
    }
    text::DecimalDigits decimal;
    constexpr std::size_t kLongest = 64;
    if (digits.size() > kLongest || text::ParseDecimal(digits, decimal) != text::NumberForm::Number) {
        return std::nullopt;
    }
    if (decimal.high != 0 || decimal.low >= static_cast<std::uint64_t>(kBeyond)) return std::nullopt;
    auto units = static_cast<std::int64_t>(decimal.low);
    if (decimal.negative) units = -units;
    ScaledConstant scaled;
    if (decimal.scale <= decimals) {
        scaled.floor = SaturatingScale(units, decimals - decimal.scale);
        return scaled;
    }
    for (unsigned places = decimal.scale - decimals; places > 0; --places) {
        const std::int64_t rest = units % 10;
        if (rest != 0) scaled.isExact = false;
        units = units / 10 - (rest < 0 ? 1 : 0);
    }
    scaled.floor = units;
    return scaled;
}

}  // namespace zu::expression
