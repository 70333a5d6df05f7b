#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zu::text {

// Several characters as one number, the first character in its lowest byte, so that they can be looked at
// together.

inline std::uint64_t LoadWord(const char* at) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    if constexpr (std::endian::native == std::endian::big) {
        std::uint64_t turned = 0;
        for (unsigned i = 0; i < sizeof word; ++i)
            turned |= (word >> (8 * i) & 0xFF) << (56 - 8 * i);
        return turned;
    }
    return word;
}

inline std::uint32_t LoadHalfWord(const char* at) noexcept {
    std::uint32_t half = 0;
    std::memcpy(&half, at, sizeof half);
    if constexpr (std::endian::native == std::endian::big)
        return (half >> 24) | (half >> 8 & 0xFF00) | (half << 8 & 0xFF0000) | half << 24;
    return half;
}

/// The same character eight times.
constexpr std::uint64_t WordOf(char character) noexcept {
    return 0x0101010101010101ULL * static_cast<unsigned char>(character);
}

inline constexpr std::uint64_t kTopBits = WordOf('\x80');
inline constexpr std::uint64_t kBlanks = WordOf(' ');
inline constexpr std::uint64_t kZeros = WordOf('0');

/// The 4 to 7 characters of a field as the last ones of a word, blanks in front of them. Reads nothing
/// outside the field.
inline std::uint64_t LoadBehindBlanks(const char* field, unsigned width) noexcept {
    const unsigned missing = 8 * (8 - width);
    return std::uint64_t{LoadHalfWord(field)} << missing |
           std::uint64_t{LoadHalfWord(field + width - 4)} << 32 | kBlanks >> (64 - missing);
}

/// The characters that the last eight of a field of 8 to 16 leave, as the last ones of a word, blanks in
/// front of them.
inline std::uint64_t LoadInFrontOfLastWord(const char* field, unsigned width) noexcept {
    if (width == 8) return kBlanks;
    const unsigned missing = 8 * (16 - width);
    return missing == 0 ? LoadWord(field) : LoadWord(field) << missing | kBlanks >> (64 - missing);
}

/// Not 0 when one of the bytes is 0.
constexpr std::uint64_t HasZeroByte(std::uint64_t word) noexcept {
    return (word - WordOf('\x01')) & ~word & kTopBits;
}

/// The top bit of each byte that is no digit.
constexpr std::uint64_t NoDigits(std::uint64_t word) noexcept {
    const std::uint64_t turned = word ^ kZeros;
    return (((turned & ~kTopBits) + WordOf('\x76')) | turned) & kTopBits;
}

/// The first byte from `at` on that is `byte`, else `end`. For texts so short that a call would cost more.
inline const char* FindByte(const char* at, const char* end, char byte) noexcept {
    const std::uint64_t wanted = WordOf(byte);
    for (; end - at >= 8; at += 8) {
        // The lowest of the bits is that of the first such byte; those above it may be wrong.
        if (const std::uint64_t found = HasZeroByte(LoadWord(at) ^ wanted))
            return at + static_cast<unsigned>(std::countr_zero(found)) / 8;
    }
    while (at != end && *at != byte)
        ++at;
    return at;
}

/// The same for the first one of two.
inline const char* FindEither(const char* at, const char* end, char first, char second) noexcept {
    const std::uint64_t firsts = WordOf(first);
    const std::uint64_t seconds = WordOf(second);
    for (; end - at >= 8; at += 8) {
        const std::uint64_t word = LoadWord(at);
        if (const std::uint64_t found = HasZeroByte(word ^ firsts) | HasZeroByte(word ^ seconds))
            return at + static_cast<unsigned>(std::countr_zero(found)) / 8;
    }
    while (at != end && *at != first && *at != second)
        ++at;
    return at;
}

/// Copies up to 16 bytes without a call.
inline void CopyShort(const char* from, std::size_t length, char* to) noexcept {
    if (length >= 8) {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::memcpy(&first, from, 8);
        std::memcpy(&last, from + length - 8, 8);
        std::memcpy(to, &first, 8);
        std::memcpy(to + length - 8, &last, 8);
    } else if (length >= 4) {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::memcpy(&first, from, 4);
        std::memcpy(&last, from + length - 4, 4);
        std::memcpy(to, &first, 4);
        std::memcpy(to + length - 4, &last, 4);
    } else if (length != 0) {
        to[0] = from[0];
        to[length / 2] = from[length / 2];
        to[length - 1] = from[length - 1];
    }
}

/// Puts blanks behind a content that is few bytes long.
inline void FillBlanks(char* at, std::size_t length) noexcept {
    for (; length >= 8; at += 8, length -= 8)
        std::memcpy(at, &kBlanks, 8);
    for (; length != 0; --length)
        *at++ = ' ';
}

/// Copies the bytes of a field, which are few.
inline void CopyBytes(const char* from, std::size_t length, char* to) noexcept {
    for (; length > 16; from += 16, to += 16, length -= 16) {
        std::uint64_t first = 0;
        std::uint64_t second = 0;
        std::memcpy(&first, from, 8);
        std::memcpy(&second, from + 8, 8);
        std::memcpy(to, &first, 8);
        std::memcpy(to + 8, &second, 8);
    }
    CopyShort(from, length, to);
}

}  // namespace zu::text
