#pragma once

#include <cstdint>

#include "portable/text/ByteWords.h"

namespace zu::expression {

// Number and date fields are digits in a fixed place. Eight of them are read at once here: one load, three
// multiplications (the pairwise sums known as SWAR parsing) instead of eight steps with branches.

/// What eight characters of a number turned out to be.
struct EightDigits {
    std::uint32_t value = 0;
    bool isNumber = false;    ///< digits, the first ones possibly blanks
    bool hasBlanks = false;   ///< the first character is a blank
    bool isAllBlank = false;  ///< there is no digit at all
};

/// `characters` as text::LoadWord answers them.
inline EightDigits ReadEightDigits(std::uint64_t characters) noexcept {
    EightDigits result;
    std::uint64_t digits = characters ^ 0x3030303030303030U;
    // A blank (0x20) is 0x10 now. Blanks may only stand in front: in the low bytes.
    const std::uint64_t blankBits = digits & 0x1010101010101010U;
    if (blankBits != 0) {
        const std::uint64_t blanks = (blankBits >> 4) * 0xFF;
        if ((blanks & (blanks + 1)) != 0 || (digits & blanks) != blankBits) return result;
        digits &= ~blanks;
        result.hasBlanks = true;
        result.isAllBlank = blanks == ~std::uint64_t{0};
    }
    if (((digits | (digits + 0x0606060606060606U)) & 0xF0F0F0F0F0F0F0F0U) != 0) return result;
    digits = digits * 10 + (digits >> 8);
    constexpr std::uint64_t kPairs = 0x000000FF000000FFU;
    constexpr std::uint64_t kHundreds = 100 + (std::uint64_t{1000000} << 32);
    constexpr std::uint64_t kUnits = 1 + (std::uint64_t{10000} << 32);
    result.value = static_cast<std::uint32_t>(
        ((digits & kPairs) * kHundreds + ((digits >> 16) & kPairs) * kUnits) >> 32);
    result.isNumber = true;
    return result;
}

/// Eight bytes of digits, the first ones possibly blanks, as their value; false for anything else.
inline bool ParseEightDigits(const char* at, std::uint32_t& value) noexcept {
    const EightDigits digits = ReadEightDigits(text::LoadWord(at));
    value = digits.value;
    return digits.isNumber;
}

/// `width` (4 to 16) characters of digits, the first ones possibly blanks; false for anything else. Reads
/// nothing outside them: shorter runs are put together from two loads that overlap.
inline bool ParseDigitRun(const char* at, unsigned width, std::int64_t& value) noexcept {
    if (width < 8) {
        const EightDigits digits = ReadEightDigits(text::LoadBehindBlanks(at, width));
        value = digits.value;
        return digits.isNumber;
    }
    const EightDigits low = ReadEightDigits(text::LoadWord(at + width - 8));
    value = low.value;
    if (!low.isNumber || width == 8) return low.isNumber;
    const std::uint64_t first = text::LoadInFrontOfLastWord(at, width);
    if (first == text::kBlanks) return true;
    const EightDigits high = ReadEightDigits(first);
    constexpr std::int64_t kShift = 100000000;
    value += high.value * kShift;
    return high.isNumber && !low.hasBlanks;
}

/// ParseUnits for numbers without any shortcut, one character after the other.
inline bool ParseUnitsSlowly(const char* at, unsigned width, unsigned decimals,
                             std::int64_t& units) noexcept {
    const unsigned wholeEnd = decimals == 0 ? width : width - decimals - 1;
    unsigned i = 0;
    while (i < wholeEnd && at[i] == ' ')
        ++i;
    if (i == wholeEnd && decimals != 0) {
        // No digit before the point: a blank field, or a form such as ".50".
        unsigned blanks = i;
        while (blanks < width && at[blanks] == ' ')
            ++blanks;
        units = 0;
        if (blanks == width) return true;
    }
    const bool negative = i < wholeEnd && at[i] == '-';
    if (negative) ++i;
    if (width - i > (decimals == 0 ? 18U : 19U)) return false;
    std::int64_t value = 0;
    for (; i < wholeEnd; ++i) {
        const unsigned digit = static_cast<unsigned char>(at[i]) - unsigned{'0'};
        if (digit > 9) return false;
        value = value * 10 + digit;
    }
    if (decimals != 0) {
        if (at[i] != '.') return false;
        for (++i; i < width; ++i) {
            const unsigned digit = static_cast<unsigned char>(at[i]) - unsigned{'0'};
            if (digit > 9) return false;
            value = value * 10 + digit;
        }
    }
    units = negative ? -value : value;
    return true;
}

/// The digits of a number field in its regular form: right-justified, a minus sign or not, the point exactly
/// `decimals` places before the end. `units` receives the number without the point. Blank fields are 0.
/// False for any other form and for more than 18 digits: such numbers are read the long way.
inline bool ParseUnits(const char* at, unsigned width, unsigned decimals, std::int64_t& units) noexcept {
    const unsigned wholeWidth = decimals == 0 ? width : width - decimals - 1;
    if (wholeWidth < 4 || wholeWidth > 16 || width > 18 || !ParseDigitRun(at, wholeWidth, units)) {
        return ParseUnitsSlowly(at, width, decimals, units);
    }
    if (decimals == 0) return true;
    if (at[wholeWidth] != '.') return ParseUnitsSlowly(at, width, decimals, units);
    for (unsigned i = wholeWidth + 1; i < width; ++i) {
        const unsigned digit = static_cast<unsigned char>(at[i]) - unsigned{'0'};
        if (digit > 9) return false;
        units = units * 10 + digit;
    }
    return true;
}

}  // namespace zu::expression
