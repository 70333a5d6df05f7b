#pragma once

#include <cstddef>
#include <string_view>

#include "portable/text/CodePage.h"

namespace zu::expression {

// Lengths and positions in texts count bytes in code page tables and characters where texts are UTF-8.

inline bool CountsCharacters(const text::CodePage& codePage) noexcept {
    constexpr unsigned kUtf8 = 65001;
    return codePage.number() == kUtf8;
}

/// Bytes of the unit at `at`, which lies within the text.
inline std::size_t UnitLength(std::string_view text, std::size_t at, bool countsCharacters) noexcept {
    std::size_t length = 1;
    if (!countsCharacters) return length;
    while (at + length < text.size() && (static_cast<unsigned char>(text[at + length]) & 0xC0U) == 0x80U) {
        ++length;
    }
    return length;
}

inline std::size_t UnitCount(std::string_view text, bool countsCharacters) noexcept {
    if (!countsCharacters) return text.size();
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += UnitLength(text, at, true))
        ++count;
    return count;
}

/// The byte where unit number `units` (from 0) begins; the text's size when there are not so many.
inline std::size_t UnitOffset(std::string_view text, std::size_t units, bool countsCharacters) noexcept {
    if (!countsCharacters) return units < text.size() ? units : text.size();
    std::size_t at = 0;
    while (units > 0 && at < text.size()) {
        at += UnitLength(text, at, true);
        --units;
    }
    return at;
}

}  // namespace zu::expression
