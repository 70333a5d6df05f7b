#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "portable/text/ByteWords.h"

namespace zu::text {

/// Finds the number in a field of digits when it stands there as writers of tables put it: right-justified
/// with blanks in front, a minus sign when it is less than zero, no needless zero in front, and behind a
/// point exactly the decimal places of the field. The bytes of such a number are its canonical text: nobody
/// has to work out what they mean to write them elsewhere. Fields are looked at eight bytes at a time.
class DigitsField {
public:
    /// Where a number lies in its field: [begin, end), the sign included.
    struct Place {
        unsigned begin = 0;
        unsigned end = 0;  ///< 0: not such a number
    };

    /// `decimals` as the field's definition says.
    DigitsField(std::size_t width, unsigned decimals) noexcept;

    /// False: fields so wide, or with such decimals, are not looked at; Find answers "none" for them.
    bool isUsable() const noexcept { return width_ != 0; }

    /// The whole number in the field, with all its decimal places.
    Place Find(const char* field) const noexcept;
    /// The same without the zeros that a fraction ends with, and without a point that has nothing behind it.
    Place FindShortest(const char* field) const noexcept;

    static constexpr std::size_t kGreatestWidth = 20;

private:
    /// The last 16 characters of the field, blanks in front of shorter ones, as two little-endian numbers.
    struct Words {
        std::uint64_t low;
        std::uint64_t high;
    };
    bool Load(const char* field, Words& words) const noexcept;
    Place FindIn(const char* field, const Words& words) const noexcept;

    static constexpr unsigned kCharacters = 16;   // that two words hold
    static constexpr unsigned kMostDecimals = 7;  // so that the point lies in the second word

    unsigned width_ = 0;
    unsigned decimals_;
};

inline DigitsField::DigitsField(std::size_t width, unsigned decimals) noexcept : decimals_(decimals) {
    // A digit must stand in front of the point.
    const bool fits = decimals == 0 || (decimals <= kMostDecimals && decimals + 2 <= width);
    if (width >= 1 && width <= kGreatestWidth && fits) width_ = static_cast<unsigned>(width);
}

inline bool DigitsField::Load(const char* field, Words& words) const noexcept {
    const char* const end = field + width_;
    if (width_ >= 8) {
        words.high = LoadWord(end - 8);
        if (width_ >= kCharacters) {
            words.low = LoadWord(end - 16);
            // More digits than a number of 64 bits has are left to others.
            return std::all_of(field, end - 16, [](char c) { return c == ' '; });
        }
        words.low = LoadInFrontOfLastWord(field, width_);
        return true;
    }
    words.low = kBlanks;
    words.high = kBlanks;
    if (width_ >= 4) {
        words.high = LoadBehindBlanks(field, width_);
    } else {
        for (; field != end; ++field)
            words.high = words.high >> 8 | std::uint64_t{static_cast<unsigned char>(*field)} << 56;
    }
    return true;
}

inline DigitsField::Place DigitsField::FindIn(const char* field, const Words& words) const noexcept {
    std::uint64_t high = words.high;
    unsigned wholeEnd = kCharacters;
    if (decimals_ != 0) {
        const unsigned point = 7 - decimals_;
        wholeEnd = 8 + point;
        const std::uint64_t difference = (high >> (8 * point) & 0xFF) ^ '.';
        if (difference != 0) return {};
        high ^= std::uint64_t{'.' ^ '0'} << (8 * point);
    }
    // Behind the last character that is no digit stand digits alone; what stands before them are blanks and a
    // sign.
    const std::uint64_t highOthers = NoDigits(high);
    const std::uint64_t lowOthers = NoDigits(words.low);
    // Chosen without a jump: numbers are as often longer as shorter than a word.
    const bool beginsInLow = highOthers == 0;
    const std::uint64_t word = beginsInLow ? words.low : high;
    const std::uint64_t others = beginsInLow ? lowOthers : highOthers;
    const unsigned before = beginsInLow ? 0 : 8;            // characters in front of `word`
    if ((words.low != kBlanks) && !beginsInLow) return {};  // nothing may stand so far left
    const unsigned front = 8 - static_cast<unsigned>(std::countl_zero(others)) / 8;
    bool negative = false;
    if (front != 0) {
        const unsigned behind = 8 * (8 - front);
        const std::uint64_t difference = (word ^ kBlanks) << behind >> behind;
        if (difference != 0) {
            if (difference != std::uint64_t{' ' ^ '-'} << (8 * (front - 1))) return {};
            negative = true;
        }
    }
    const unsigned first = before + front;
    if (first >= wholeEnd) return {};
    const unsigned begin = first + width_ - kCharacters;
    if (field[begin] == '0') {
        if (first + 1 != wholeEnd) return {};
        if (negative) {
            // The minus sign of zero is not written.
            const char* const end = field + width_;
            if (std::all_of(end - decimals_, end, [](char c) { return c == '0'; })) return {};
        }
    }
    return {begin - (negative ? 1 : 0), width_};
}

inline DigitsField::Place DigitsField::Find(const char* field) const noexcept {
    Words words{};
    if (!isUsable() || !Load(field, words)) return {};
    return FindIn(field, words);
}

inline DigitsField::Place DigitsField::FindShortest(const char* field) const noexcept {
    Words words{};
    if (!isUsable() || !Load(field, words)) return {};
    Place place = FindIn(field, words);
    if (decimals_ == 0 || place.end == 0) return place;
    // The characters behind the point are in the upper bytes.
    const unsigned front = 8 * (8 - decimals_);
    const std::uint64_t fraction = (words.high ^ kZeros) >> front;
    place.end -= fraction == 0 ? decimals_ + 1
                               : decimals_ - (71 - static_cast<unsigned>(std::countl_zero(fraction))) / 8;
    return place;
}

}  // namespace zu::text
