#pragma once

#include <array>
#include <string>
#include <string_view>

#include "portable/textio/Cell.h"

namespace zu::textio {

/// True for a number less than zero, however it will be rounded.
bool IsNegative(const Cell& number) noexcept;

/// Prints the magnitude of numbers: no sign, "." as the decimal point, no thousands separators. Answers are
/// valid until the next call. Cells that hold no finite number are a TypeMismatch error.
class NumberPrinter {
public:
    /// The shortest text that shows the value. Floating-point values from 1e15 up and below 1e-5 take the
    /// form 1.5E+20.
    std::string_view General(const Cell& number);

    /// `decimals` places, rounded half away from zero on the shortest digits that show the value, so that
    /// 1.005 to two places is 1.01. With `point` the decimal point stands there even without places behind
    /// it.
    std::string_view Masked(const Cell& number, std::size_t decimals, bool point);

private:
    /// Digits without zeros in front and where the decimal point stands: 0.d1d2d3... * 10^point.
    struct Digits {
        std::string_view digits;
        int point = 0;
    };

    Digits DigitsOf(const Cell& number);
    Digits Normal(char* first, char* last, int point) const noexcept;
    std::string_view Plain(const Digits& digits);
    std::string_view Scientific(const Digits& digits);
    std::string_view Rounded(const Digits& digits, std::size_t decimals, bool point);

    std::array<char, 48> buffer_{};
    std::string text_;
};

}  // namespace zu::textio
