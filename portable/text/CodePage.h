#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zu::text {

/// A character set of table files and its conversion to and from UTF-16.
///
/// Single-byte sets are tables of this project, so every platform gives the same characters. The
/// double-byte sets (932, 936, 949, 950) go through the platform (`MultiByteToWideChar`, iconv).
class CodePage {
public:
    virtual ~CodePage() = default;

    /// The set by its number (437, 850, 1252, 65001, ...); null when it is not known.
    static const CodePage* Find(unsigned number) noexcept;
    /// The set by the language driver byte of a DBF header; null for 0 and unknown marks.
    static const CodePage* FindByDbfMark(std::uint8_t mark) noexcept;
    /// The set by a text such as "1252", "CP1252", "UTF-8", "ISO-8859-1", "ANSI 1252"; null when unknown.
    static const CodePage* FindByName(std::string_view name) noexcept;
    /// Windows-1252.
    static const CodePage& Default() noexcept;

    virtual unsigned number() const noexcept = 0;
    /// One byte is one character.
    virtual bool isSingleByte() const noexcept = 0;

    /// Appends the characters of `bytes` to `out`; undefined bytes become U+FFFD. The Windows sets have no
    /// undefined bytes between 80 and 9F: as in Windows these become control characters and come back.
    virtual void Decode(std::string_view bytes, std::u16string& out) const = 0;
    /// The bytes of `characters`; nothing when one of them is not in the set. `firstBad`, when given,
    /// receives the index of the first character that is missing.
    virtual std::optional<std::string> Encode(std::u16string_view characters,
                                              std::size_t* firstBad = nullptr) const = 0;

    /// Byte tables for case conversion and case-blind comparison. For multi-byte sets only ASCII changes.
    virtual const std::array<std::uint8_t, 256>& upper() const noexcept = 0;
    virtual const std::array<std::uint8_t, 256>& lower() const noexcept = 0;
};

}  // namespace zu::text
