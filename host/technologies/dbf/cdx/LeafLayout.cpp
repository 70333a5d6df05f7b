#include "host/technologies/dbf/cdx/LeafLayout.h"

#include <algorithm>
#include <bit>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/Damage.h"

namespace zu::dbf::cdx {

namespace {

constexpr unsigned kMinimalEntrySize = 3;  // some readers take nothing smaller
constexpr unsigned kMaxRecordBits = 32;

}  // namespace

LeafLayout LeafLayout::For(std::size_t keyLength, std::uint32_t greatestRecord) noexcept {
    LeafLayout layout;
    layout.countBits = static_cast<unsigned>(std::bit_width(keyLength));
    const auto needed = static_cast<unsigned>(std::bit_width(greatestRecord)) + 2 * layout.countBits;
    layout.entrySize = std::max(kMinimalEntrySize, (needed + 7) / 8);
    layout.recordBits = std::min(kMaxRecordBits, 8 * layout.entrySize - 2 * layout.countBits);
    return layout;
}

LeafLayout LeafLayout::Parse(PageBytes bytes, std::uint32_t offset) {
    const std::byte* raw = bytes.data();
    LeafLayout layout;
    layout.recordBits = std::to_integer<unsigned>(raw[leaf::kRecordBits]);
    layout.countBits = std::to_integer<unsigned>(raw[leaf::kDuplicateBits]);
    layout.entrySize = std::to_integer<unsigned>(raw[leaf::kEntrySize]);
    const auto trailingBits = std::to_integer<unsigned>(raw[leaf::kTrailingBits]);
    const bool fits = layout.recordBits >= 1 && layout.recordBits <= kMaxRecordBits &&
                      layout.countBits >= 1 && layout.countBits <= 8 && trailingBits == layout.countBits &&
                      layout.entrySize >= 1 && layout.entrySize <= 8 &&
                      layout.recordBits + 2 * layout.countBits <= 8 * layout.entrySize;
    if (!fits) {
        FailDamaged(offset, "the bit fields of the entries (" + std::to_string(layout.recordBits) + " + " +
                                std::to_string(layout.countBits) + " + " + std::to_string(trailingBits) +
                                " bits) do not fit into entries of " + std::to_string(layout.entrySize) +
                                " bytes");
    }
    if (LoadLittle<std::uint32_t>(raw + leaf::kRecordMask) != layout.recordMask() ||
        std::to_integer<std::uint8_t>(raw[leaf::kDuplicateMask]) != layout.countMask() ||
        std::to_integer<std::uint8_t>(raw[leaf::kTrailingMask]) != layout.countMask()) {
        FailDamaged(offset, "the masks of the entries are not those of their bit fields");
    }
    return layout;
}

void LeafLayout::Store(PageBuffer bytes) const noexcept {
    std::byte* raw = bytes.data();
    StoreLittle<std::uint32_t>(raw + leaf::kRecordMask, recordMask());
    raw[leaf::kDuplicateMask] = static_cast<std::byte>(countMask());
    raw[leaf::kTrailingMask] = static_cast<std::byte>(countMask());
    raw[leaf::kRecordBits] = static_cast<std::byte>(recordBits);
    raw[leaf::kDuplicateBits] = static_cast<std::byte>(countBits);
    raw[leaf::kTrailingBits] = static_cast<std::byte>(countBits);
    raw[leaf::kEntrySize] = static_cast<std::byte>(entrySize);
}

}  // namespace zu::dbf::cdx
