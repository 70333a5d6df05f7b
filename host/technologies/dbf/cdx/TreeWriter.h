#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/LeafPacker.h"
#include "host/technologies/dbf/cdx/PageStream.h"

namespace zu::dbf::cdx {

/// How full new pages are made. Some room lets later inserts in without a split.
enum class Filling { Roomy, Full };

/// Writes a tree from sorted keys: the leaves from left to right, then each level above.
class TreeWriter {
public:
    TreeWriter(PageStream& out, const KeyShape& shape, std::uint32_t greatestRecord,
               Filling filling = Filling::Roomy);

    /// Takes the next entry; entries come in the order of the tree.
    void Add(const std::byte* key, std::uint32_t record);
    /// Writes what is left and answers the offset of the root page (an empty leaf when nothing was added).
    std::uint32_t Finish();

private:
    /// The last entry of each page of a level, and where the page is.
    struct Level {
        std::vector<std::byte> keys;
        std::vector<std::uint32_t> records;
        std::vector<std::uint32_t> pages;
    };

    void StoreLeaf(bool isLast);
    Level WriteLevelAbove(const Level& below);

    PageStream& out_;
    KeyShape shape_;
    std::size_t capacity_;
    LeafPacker leaf_;
    Level leaves_;
};

}  // namespace zu::dbf::cdx
