#pragma once

#include <cstddef>
#include <cstdint>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/LeafLayout.h"
#include "host/technologies/dbf/cdx/PageHeader.h"

namespace zu::dbf::cdx {

/// The packed entries of a leaf page, one after the other.
class LeafEntries {
public:
    /// The page at `offset`, which must outlive the object. Damaged when it is no leaf or its counts and bit
    /// fields contradict each other.
    LeafEntries(PageBytes bytes, std::uint32_t offset, std::size_t keyLength);

    const PageHeader& header() const noexcept { return header_; }
    const LeafLayout& layout() const noexcept { return layout_; }

    /// Goes to the next entry, the first time to the first one; false behind the last. Damaged when its key
    /// does not fit into the page.
    bool Next();

    std::uint32_t record() const noexcept { return record_; }
    /// The bytes that the key has in common with the one before; 0 for the first, whatever it claims.
    std::size_t duplicate() const noexcept { return duplicate_; }
    /// What the first entry claims to share with a key before it; 0 in sound pages.
    std::size_t claimedDuplicate() const noexcept { return claimedDuplicate_; }
    /// The bytes behind the common ones, and how many there are; the rest of the key is fill.
    const std::byte* fresh() const noexcept { return bytes_.data() + position_; }
    std::size_t freshCount() const noexcept { return freshCount_; }
    /// The bytes between the entries and the keys so far.
    std::size_t free() const noexcept { return position_ - entriesEnd_; }

    /// Only the record number of entry `index`.
    std::uint32_t RecordAt(std::size_t index) const noexcept;

private:
    std::uint64_t Load(std::size_t index) const noexcept;

    PageBytes bytes_;
    std::uint32_t offset_;
    std::size_t keyLength_;
    PageHeader header_;
    LeafLayout layout_;
    std::size_t entriesEnd_ = 0;
    std::size_t next_ = 0;
    std::size_t position_ = kPageSize;
    std::uint32_t record_ = 0;
    std::size_t duplicate_ = 0;
    std::size_t claimedDuplicate_ = 0;
    std::size_t freshCount_ = 0;
};

}  // namespace zu::dbf::cdx
