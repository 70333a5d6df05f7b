#pragma once

#include <cstdint>

#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// The pages of an index file for somebody who changes them.
class PageStore {
public:
    virtual ~PageStore() = default;

    /// The page at `offset` with all changes made so far; valid until the next call of any member. Damaged
    /// when there is no such page.
    virtual PageBytes Read(std::uint32_t offset) = 0;
    virtual void Write(std::uint32_t offset, PageBytes bytes) = 0;
    /// The offset of a page for new content: an unused one of the file, else one behind its end.
    virtual std::uint32_t Allocate() = 0;
    /// The page holds nothing any more and may be allocated again.
    virtual void Release(std::uint32_t offset) = 0;
};

}  // namespace zu::dbf::cdx
