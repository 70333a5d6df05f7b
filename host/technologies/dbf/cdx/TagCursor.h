#pragma once

#include <cstddef>
#include <cstdint>

#include "host/technologies/dbf/cdx/LeafPage.h"
#include "host/technologies/dbf/cdx/LeafPath.h"

namespace zu::dbf::cdx {

/// A position in the tree of a tag, in the stored (ascending) order; descending tags are walked backwards.
///
/// Every member may end with Damaged. A cursor that stands on no entry must be positioned before it moves.
class TagCursor {
public:
    TagCursor(CdxFile& file, std::uint32_t root, const KeyShape& shape) noexcept : path_(file, root, shape) {}

    /// Each answers whether there is such an entry.
    bool First();
    bool Last();
    /// To the first entry that is not before (`key`, `record`).
    bool Seek(const std::byte* key, std::uint32_t record);
    /// To the last entry that is before (`key`, `record`).
    bool SeekBefore(const std::byte* key, std::uint32_t record);
    bool Next();
    bool Previous();

    /// The entry that the cursor stands on; the key is valid until the cursor moves.
    const std::byte* key() const noexcept { return page_.key(index_); }
    std::uint32_t record() const noexcept { return page_.record(index_); }
    const LeafPath& path() const noexcept { return path_; }

private:
    void Load();
    bool ForwardToEntry();
    bool BackToEntry();

    LeafPath path_;
    LeafPage page_;
    std::size_t index_ = 0;
};

}  // namespace zu::dbf::cdx
