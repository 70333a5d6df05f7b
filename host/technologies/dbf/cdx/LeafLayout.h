#pragma once

#include <cstddef>
#include <cstdint>

#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// How the entries of one leaf page are packed: record number, then the number of bytes shared with the key
/// before, then the number of trailing fill bytes, as one little-endian integer of `entrySize` bytes.
///
/// Every page states its own layout; pages of one tag differ in real files.
struct LeafLayout {
    unsigned recordBits = 0;
    unsigned countBits = 0;  ///< of each of the two byte counts
    unsigned entrySize = 0;  ///< bytes

    std::uint32_t recordMask() const noexcept {
        return static_cast<std::uint32_t>((std::uint64_t{1} << recordBits) - 1);
    }
    std::uint8_t countMask() const noexcept { return static_cast<std::uint8_t>((1U << countBits) - 1); }

    bool operator==(const LeafLayout&) const = default;

    /// The layout for new pages: three bytes an entry, or as many as `greatestRecord` needs.
    static LeafLayout For(std::size_t keyLength, std::uint32_t greatestRecord) noexcept;
    /// The layout that a page states; Damaged when its parts do not add up.
    static LeafLayout Parse(PageBytes bytes, std::uint32_t offset);
    void Store(PageBuffer bytes) const noexcept;
};

}  // namespace zu::dbf::cdx
