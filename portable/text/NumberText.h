#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zu::text {

/// What the bytes of a number field turned out to be.
enum class NumberForm : std::uint8_t {
    Number,     ///< digits that were understood
    Blank,      ///< nothing but blanks, NULs, or a lone sign or point
    Unreadable  ///< overflow stars or something that is no number
};

/// A number as its digits say: (negative ? -1 : 1) * (high * 2^64 + low) / 10^scale.
struct DecimalDigits {
    std::uint64_t low = 0;
    std::uint32_t high = 0;
    std::uint8_t scale = 0;  ///< 0 to 28
    bool negative = false;
    bool operator==(const DecimalDigits&) const = default;
};

/// Reads the digits of a number field. Independent of any locale; never reads outside `bytes`.
///
/// Understands what writers of table files leave behind: blanks and NULs on both sides, a leading plus sign,
/// zeros in front, a comma as the decimal sign, an exponent ("1.5e+03"). Decimal places beyond 28 and digits
/// beyond 96 bits are rounded away (half away from zero); a number too great for 96 bits is Unreadable.
NumberForm ParseDecimal(std::string_view bytes, DecimalDigits& out) noexcept;

/// The same as the nearest double; `out` is 0 unless a Number is answered.
NumberForm ParseNumber(std::string_view bytes, double& out) noexcept;

/// The nearest double of a decimal.
double ToDouble(const DecimalDigits& digits) noexcept;

/// Writes `units` / 10^`decimals`, right-justified with blanks, into exactly `width` bytes at `out`.
/// False (and nothing written) when it does not fit. `decimals` is at most 18.
bool PrintUnits(std::int64_t units, unsigned width, unsigned decimals, char* out) noexcept;

/// Writes `value` with `decimals` places (0 to 30), rounded half away from zero as its shortest decimal form
/// says, as PrintUnits does. Infinities and NaN do not fit.
bool PrintNumber(double value, unsigned width, unsigned decimals, char* out) noexcept;

}  // namespace zu::text
