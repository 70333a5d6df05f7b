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
        value *= 10;
    }
    return value;
}

/// Takes the last digit off; true when it was not 0.
bool DivideByTen(text::DecimalDigits& decimal) noexcept {
    const std::uint64_t middle = (std::uint64_t{decimal.high % 10} << 32) | decimal.low >> 32;
    decimal.high /= 10;
    const std::uint64_t low = (middle % 10) << 32 | (decimal.low & 0xFFFFFFFFU);
    decimal.low = (middle / 10) << 32 | low / 10;
    --decimal.scale;
    return low % 10 != 0;
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
    ScaledConstant scaled;
    bool hasRest = false;
    while (decimal.scale > decimals)
        hasRest = DivideByTen(decimal) || hasRest;
    scaled.isExact = !hasRest;
    const bool isBeyond = decimal.high != 0 || decimal.low >= static_cast<std::uint64_t>(kBeyond);
    auto units = isBeyond ? kBeyond
                          : SaturatingScale(static_cast<std::int64_t>(decimal.low), decimals - decimal.scale);
    if (decimal.negative) units = hasRest ? -units - 1 : -units;
    scaled.floor = units;
    return scaled;
}

}  // namespace zu::expression
