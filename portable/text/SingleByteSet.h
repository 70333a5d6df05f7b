#pragma once

#include <cstdint>
#include <vector>

#include "portable/text/CodePage.h"
#include "portable/text/SingleByteTables.h"

namespace zu::text {

/// A set in which each byte is one character, given by a table.
class SingleByteSet final : public CodePage {
public:
    explicit SingleByteSet(const SingleByteTable& table);

    unsigned number() const noexcept override { return number_; }
    bool isSingleByte() const noexcept override { return true; }
    void Decode(std::string_view bytes, std::u16string& out) const override;
    std::optional<std::string> Encode(std::u16string_view characters, std::size_t* firstBad) const override;
    const std::array<std::uint8_t, 256>& upper() const noexcept override { return upper_; }
    const std::array<std::uint8_t, 256>& lower() const noexcept override { return lower_; }

private:
    struct Entry {
        char16_t character;
        std::uint8_t byte;
    };

    /// The byte of a character; 0 for characters that are missing (and for NUL itself).
    std::uint8_t ByteOf(char16_t character) const noexcept;

    unsigned number_;
    std::array<char16_t, 256> characters_;
    std::vector<Entry> byCharacter_;  ///< the upper half, ascending
    std::array<std::uint8_t, 256> upper_;
    std::array<std::uint8_t, 256> lower_;
};

}  // namespace zu::text
