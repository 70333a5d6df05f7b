#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// Which pages of an index file are taken, so that no page serves twice and no chain runs in a circle.
class PageUse {
public:
    explicit PageUse(std::size_t pages) : used_(pages, false) {}

    /// Marks the page at `offset`; false when it is no page of the file or marked already.
    bool Take(std::uint32_t offset) {
        const std::size_t number = offset / kPageSize;
        if (offset % kPageSize != 0 || number >= used_.size() || used_[number]) return false;
        used_[number] = true;
        ++taken_;
        return true;
    }
    std::size_t unused() const noexcept { return used_.size() - taken_; }

private:
    std::vector<bool> used_;
    std::size_t taken_ = 0;
};

}  // namespace zu::dbf::cdx
