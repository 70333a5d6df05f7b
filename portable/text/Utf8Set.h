#pragma once

#include "portable/text/CodePage.h"

namespace zu::text {

/// UTF-8 as the character set of a table (number 65001).
class Utf8Set final : public CodePage {
public:
    Utf8Set();

    unsigned number() const noexcept override { return 65001; }
    bool isSingleByte() const noexcept override { return false; }
    void Decode(std::string_view bytes, std::u16string& out) const override;
    std::optional<std::string> Encode(std::u16string_view characters, std::size_t* firstBad) const override;
    const std::array<std::uint8_t, 256>& upper() const noexcept override { return upper_; }
    const std::array<std::uint8_t, 256>& lower() const noexcept override { return lower_; }

private:
    std::array<std::uint8_t, 256> upper_;
    std::array<std::uint8_t, 256> lower_;
};

}  // namespace zu::text
