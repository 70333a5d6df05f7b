#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// The 1024 bytes in front of the tag directory and of every tag.
struct TagHeader {
    std::uint32_t root = 0;      ///< offset of the root page
    std::uint32_t freeList = 0;  ///< file header only: first unused page; 0 or kNoPage: none
    std::uint32_t counter = 0;   ///< file header only, changes with every write; an opaque token
    std::uint16_t keyLength = 0;
    std::uint8_t options = kCompact | kCompound;
    std::uint8_t signature = 1;
    bool descending = false;
    std::string collation;  ///< empty: plain byte order
    std::string key;        ///< the expression, bytes of the table's code page
    std::string filter;     ///< the FOR condition; empty: none

    bool isDirectory() const noexcept { return (options & kDirectory) != 0; }
    /// Keys compare as plain bytes.
    bool isByteOrder() const noexcept { return collation.empty() || collation == "MACHINE"; }

    /// Reads a header. Nothing is refused here: what the values are worth shows when they are used.
    static TagHeader Parse(std::span<const std::byte, kHeaderSize> bytes);
    /// Writes all 1024 bytes. Overflow when key and filter do not fit into the header.
    void Store(std::span<std::byte, kHeaderSize> bytes) const;
};

}  // namespace zu::dbf::cdx
