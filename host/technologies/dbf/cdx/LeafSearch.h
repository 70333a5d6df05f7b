#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/KeyBounds.h"

namespace zu::dbf::cdx {

/// Looks keys up in one leaf, for readers that hold no lock: what lies between two entries of one leaf is
/// decided by this page alone, whatever a writer is doing to others.
///
/// The page is copied first and not unpacked: of most entries only the count of shared bytes is looked at.
class LeafSearch {
public:
    LeafSearch(CdxFile& file, std::uint32_t root, const KeyShape& shape) noexcept
        : file_(file), root_(root), shape_(shape) {}

    /// Reads the leaf that begins at or before the lower bound and leaves in `records` those within the
    /// bounds, in the stored order. Damaged when the pages on the way are not sound.
    void Find(const KeyBounds& bounds, std::vector<std::uint32_t>& records);

    /// The leaf has an entry below the bounds, or it is the first of its tree.
    bool isWholeBelow() const noexcept { return below_ != kNoRecord || isFirst_; }
    /// The same for the other end.
    bool isWholeAbove() const noexcept { return above_ != kNoRecord || isLast_; }
    /// The records of the entries next to the bounds; kNoRecord when there is none in the leaf.
    std::uint32_t below() const noexcept { return below_; }
    std::uint32_t above() const noexcept { return above_; }
    /// The page still says what it did.
    bool IsUnchanged();

    static constexpr std::uint32_t kNoRecord = 0;

private:
    void GoToLeaf(const std::byte* key);
    void Scan(const KeyBounds& bounds, std::vector<std::uint32_t>& records);

    CdxFile& file_;
    std::uint32_t root_;
    KeyShape shape_;
    std::uint32_t leaf_ = 0;
    std::array<std::byte, kPageSize> page_;  ///< left as it is until a page is read
    std::uint32_t below_ = kNoRecord;
    std::uint32_t above_ = kNoRecord;
    bool isFirst_ = false;
    bool isLast_ = false;
};

}  // namespace zu::dbf::cdx
