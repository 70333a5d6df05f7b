#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "portable/text/CodePage.h"

namespace zu::textio {

/// The code page of a text file. Characters that it lacks are written as "?", which is what programs that
/// write such files do.
class Encoding {
public:
    explicit Encoding(const text::CodePage& page);

    const text::CodePage& page() const noexcept { return page_; }
    bool isSingleByte() const noexcept { return page_.isSingleByte(); }

    /// Writes one byte for each character to `out`; answers how many were missing. Single-byte pages only.
    std::size_t EncodeTo(std::u16string_view characters, char* out) const noexcept;
    /// Appends the bytes of any page; answers how many characters were missing.
    std::size_t Append(std::u16string_view characters, std::string& out) const;
    std::string Encode(std::u16string_view characters) const;

private:
    const text::CodePage& page_;
    std::vector<std::uint8_t> bytes_;  ///< of each UTF-16 unit; 0 for missing ones
};

}  // namespace zu::textio
