#pragma once

#include <cstdint>

#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// The first twelve bytes of every page of a tree.
struct PageHeader {
    std::uint16_t attributes = 0;
    std::uint16_t count = 0;
    std::uint32_t left = kNoPage;  ///< the neighbour on the same level
    std::uint32_t right = kNoPage;

    bool isLeaf() const noexcept { return (attributes & kLeafPage) != 0; }
    bool isRoot() const noexcept { return (attributes & kRootPage) != 0; }

    /// Reads the header of the page at `offset` of the file; Damaged when the attributes are no page's.
    static PageHeader Parse(PageBytes bytes, std::uint32_t offset);
    void Store(PageBuffer bytes) const noexcept;
};

}  // namespace zu::dbf::cdx
