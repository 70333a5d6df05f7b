#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "portable/calendar/Calendar.h"
#include "portable/text/ByteWords.h"

namespace zu::textio {

// What the bytes of a StoredField say.

inline constexpr std::size_t kStoredDateWidth = 8;

/// The length of a text without the blanks and NULs at its end.
inline std::size_t LengthWithoutPadding(const char* field, std::size_t width) noexcept {
    while (width >= 8) {
        const std::uint64_t others = text::LoadWord(field + width - 8) ^ text::kBlanks;
        if (others != 0) {
            width -= static_cast<std::size_t>(std::countl_zero(others)) / 8;
            break;
        }
        width -= 8;
    }
    while (width != 0 && (field[width - 1] == ' ' || field[width - 1] == '\0'))
        --width;
    return width;
}

/// True for a day from the year 100 on: automation dates begin there, earlier ones are shown as no value.
inline bool IsStoredDate(const char* field) noexcept {
    constexpr unsigned kFirstYear = 100;
    constexpr unsigned kDaysOfEveryMonth = 28;
    const std::uint64_t word = text::LoadWord(field);
    if (text::NoDigits(word) != 0) return false;
    const std::uint64_t digits = word ^ text::kZeros;
    const auto number = [digits](unsigned first) {
        return static_cast<unsigned>(digits >> (8 * first) & 0xFF) * 10 +
               static_cast<unsigned>(digits >> (8 * first + 8) & 0xFF);
    };
    const unsigned year = number(0) * 100 + number(2);
    const unsigned month = number(4);
    const unsigned day = number(6);
    if (year < kFirstYear || month - 1 > 11 || day == 0) return false;
    return day <= kDaysOfEveryMonth ||
           calendar::IsValid({static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)});
}

inline bool IsStoredTrue(char c) noexcept {
    return c == 'T' || c == 't' || c == 'Y' || c == 'y';
}

inline bool IsStoredFalse(char c) noexcept {
    return c == 'F' || c == 'f' || c == 'N' || c == 'n';
}

}  // namespace zu::textio
