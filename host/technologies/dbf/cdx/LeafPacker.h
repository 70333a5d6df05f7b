#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/LeafLayout.h"
#include "host/technologies/dbf/cdx/PageHeader.h"

namespace zu::dbf::cdx {

/// Packs sorted keys into leaf pages. The packing is the one that Visual FoxPro uses: all trailing fill bytes
/// are left out, then as many leading bytes as the key shares with the key before.
class LeafPacker {
public:
    /// `room`: the bytes of a page that may be used for entries and keys (less than all leaves space for
    /// later inserts).
    LeafPacker(const KeyShape& shape, const LeafLayout& layout, std::size_t room = leaf::kRoom);

    /// Takes the next key; false when it finds no room any more (the page then stays as it is).
    /// A record number beyond the layout's mask finds no room in any page.
    bool Add(const std::byte* key, std::uint32_t record) noexcept;

    std::size_t size() const noexcept { return count_; }
    /// The key and record number added last.
    const std::byte* lastKey() const noexcept { return last_.data(); }
    std::uint32_t lastRecord() const noexcept { return lastRecord_; }

    /// Writes the page and starts an empty one.
    void Store(PageHeader header, PageBuffer out) noexcept;

private:
    KeyShape shape_;
    LeafLayout layout_;
    std::size_t room_;
    std::size_t count_ = 0;
    std::size_t entriesEnd_ = leaf::kEntries;
    std::size_t keysStart_ = kPageSize;
    std::vector<std::byte> last_;
    std::uint32_t lastRecord_ = 0;
    std::array<std::byte, kPageSize> bytes_{};
};

}  // namespace zu::dbf::cdx
