#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/LeafLayout.h"
#include "host/technologies/dbf/cdx/PageHeader.h"

namespace zu::dbf::cdx {

/// A leaf page unpacked: its keys in full length and their record numbers. Reading into the same object again
/// reuses its memory.
class LeafPage {
public:
    /// Unpacks the page at `offset`. Damaged when counts, lengths or bit fields contradict each other.
    void Unpack(PageBytes bytes, std::uint32_t offset, const KeyShape& shape);

    const PageHeader& header() const noexcept { return header_; }
    const LeafLayout& layout() const noexcept { return layout_; }
    std::uint16_t statedFree() const noexcept { return statedFree_; }  ///< free bytes as the page says
    std::size_t countedFree() const noexcept { return countedFree_; }  ///< free bytes as they are

    /// The bytes that the first entry claims to share with a key before it; 0 in sound pages.
    std::size_t firstDuplicate() const noexcept { return firstDuplicate_; }

    std::size_t size() const noexcept { return records_.size(); }
    std::uint32_t record(std::size_t index) const noexcept { return records_[index]; }
    const std::byte* key(std::size_t index) const noexcept { return keys_.data() + index * keyLength_; }

    /// The first entry that is not before (`key`, `record`) in the order of the tree; `size()` when all are.
    std::size_t LowerBound(const std::byte* key, std::uint32_t record) const noexcept;

    /// Appends only the record numbers of a page to `records`.
    static PageHeader ReadRecords(PageBytes bytes, std::uint32_t offset, std::vector<std::uint32_t>& records);

private:
    PageHeader header_;
    LeafLayout layout_;
    std::uint16_t statedFree_ = 0;
    std::size_t countedFree_ = 0;
    std::size_t firstDuplicate_ = 0;
    std::size_t keyLength_ = 0;
    std::vector<std::uint32_t> records_;
    std::vector<std::byte> keys_;
};

}  // namespace zu::dbf::cdx
