#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/PageHeader.h"

namespace zu::dbf::cdx {

/// The most entries that an interior page has for keys of a length.
constexpr std::size_t InteriorCapacity(std::size_t keyLength) noexcept {
    return interior::kRoom / (keyLength + interior::kEntryTail);
}

/// An interior page as it lies in memory: each entry repeats the last key and record number of a child.
class InteriorPage {
public:
    /// The page must outlive the object. Damaged when it is a leaf, empty, or claims too many entries.
    InteriorPage(PageBytes bytes, std::uint32_t offset, const KeyShape& shape);

    const PageHeader& header() const noexcept { return header_; }
    std::size_t size() const noexcept { return header_.count; }
    const std::byte* key(std::size_t index) const noexcept { return entry(index); }
    std::uint32_t record(std::size_t index) const noexcept;
    std::uint32_t child(std::size_t index) const noexcept;

    /// The first entry that is not before (`key`, `record`): the child that holds it if any does.
    std::size_t LowerBound(const std::byte* key, std::uint32_t record) const noexcept;

private:
    const std::byte* entry(std::size_t index) const noexcept {
        return bytes_.data() + interior::kEntries + index * (keyLength_ + interior::kEntryTail);
    }

    PageBytes bytes_;
    PageHeader header_;
    std::size_t keyLength_;
};

/// Puts the entries of an interior page together.
class InteriorPacker {
public:
    explicit InteriorPacker(const KeyShape& shape, std::size_t capacity) noexcept
        : keyLength_(shape.length), capacity_(capacity) {}

    /// False when the page is full.
    bool Add(const std::byte* key, std::uint32_t record, std::uint32_t child) noexcept;
    std::size_t size() const noexcept { return count_; }
    /// Writes the page and starts an empty one.
    void Store(PageHeader header, PageBuffer out) noexcept;

private:
    std::size_t keyLength_;
    std::size_t capacity_;
    std::size_t count_ = 0;
    std::array<std::byte, kPageSize> bytes_{};
};

}  // namespace zu::dbf::cdx
