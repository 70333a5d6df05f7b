#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zu::dbf::cdx {

// The fixed numbers of CDX files as FoxPro, Visual FoxPro and Clipper write them. A file is one index of tag
// names (its header at offset 0) and one index for each tag; "record numbers" of the first are header
// offsets.

inline constexpr std::size_t kPageSize = 512;
inline constexpr std::size_t kHeaderSize = 1024;  ///< of the file and of each tag: two pages
inline constexpr std::size_t kExpressionPool = 512;
inline constexpr std::size_t kMaxKeyLength = 240;
inline constexpr std::size_t kTagNameLength = 10;
inline constexpr std::uint32_t kNoPage = 0xFFFFFFFF;
/// Trees of six levels exist for 4,000 keys; nothing real comes near this.
inline constexpr std::size_t kMaxDepth = 40;

/// Bits of the options byte of a header.
enum Option : std::uint8_t {
    kUnique = 0x01,
    kNullableKey = 0x02,
    kCandidate = 0x04,
    kHasFilter = 0x08,
    kCompact = 0x20,
    kCompound = 0x40,
    kDirectory = 0x80
};

/// Bits of the attributes of a page.
enum Attribute : std::uint16_t { kRootPage = 0x01, kLeafPage = 0x02, kHighestAttribute = 0x07 };

/// Where things lie in every page.
namespace page {
inline constexpr std::size_t kAttributes = 0;
inline constexpr std::size_t kCount = 2;
inline constexpr std::size_t kLeft = 4;
inline constexpr std::size_t kRight = 8;
}  // namespace page

/// Where things lie in a leaf page: entries grow up from `kEntries`, key bytes down from the page's end.
namespace leaf {
inline constexpr std::size_t kFree = 12;
inline constexpr std::size_t kRecordMask = 14;
inline constexpr std::size_t kDuplicateMask = 18;
inline constexpr std::size_t kTrailingMask = 19;
inline constexpr std::size_t kRecordBits = 20;
inline constexpr std::size_t kDuplicateBits = 21;
inline constexpr std::size_t kTrailingBits = 22;
inline constexpr std::size_t kEntrySize = 23;
inline constexpr std::size_t kEntries = 24;
inline constexpr std::size_t kRoom = kPageSize - kEntries;
}  // namespace leaf

/// An interior page: entries of key, record number and child offset (both big-endian) from `kEntries`.
namespace interior {
inline constexpr std::size_t kEntries = 12;
inline constexpr std::size_t kEntryTail = 8;
inline constexpr std::size_t kRoom = kPageSize - kEntries;
}  // namespace interior

using PageBytes = std::span<const std::byte, kPageSize>;
using PageBuffer = std::span<std::byte, kPageSize>;

/// What must be known of a tag to read its pages.
struct KeyShape {
    std::size_t length = 0;            ///< bytes of a key, 1 to 240
    std::byte fill = std::byte{0x20};  ///< what stands for the trailing bytes that leaves leave out
};

}  // namespace zu::dbf::cdx
