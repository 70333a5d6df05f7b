#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/KeySorter.h"
#include "host/technologies/dbf/cdx/LeafLayout.h"
#include "host/technologies/dbf/cdx/LeafPage.h"
#include "host/technologies/dbf/cdx/LeafPlan.h"
#include "host/technologies/dbf/cdx/PageHeader.h"
#include "host/technologies/dbf/cdx/PageStore.h"
#include "host/technologies/dbf/cdx/TreeEntries.h"

namespace zu::dbf::cdx {

/// Puts entries into a tree and takes them out. The root page keeps its offset through splits and merges, so
/// that the tag's header need not change and nobody holds a root that is none any more.
///
/// Damaged trees end in a Damaged error; the changes made so far are then to be thrown away by the caller.
class TreeEditor {
public:
    TreeEditor(PageStore& pages, const KeyShape& shape, std::uint32_t root);

    /// False when the entry is there already.
    bool Insert(const std::byte* key, std::uint32_t record);
    /// Puts in the entry at `from` and as many of those behind it as belong to the same leaf; answers how
    /// many. Damaged when one of them is there already.
    std::size_t InsertSorted(const KeySorter& keys, std::size_t from);
    /// False when there is no such entry.
    bool Remove(const std::byte* key, std::uint32_t record);
    /// The lowest record number that has this key.
    std::optional<std::uint32_t> Find(const std::byte* key);

private:
    struct Step {
        std::uint32_t page = 0;
        std::size_t index = 0;  ///< the child that was taken
    };

    // Walks from the root to the leaf that holds the entry, or would hold it.
    void Descend(const std::byte* key, std::uint32_t record);
    PageHeader LoadLeaf(std::uint32_t offset, TreeEntries& entries);
    PageHeader LoadInterior(std::uint32_t offset, TreeEntries& entries);

    void StoreLeaf(std::uint32_t offset, PageHeader header, const TreeEntries& entries, std::size_t from,
                   std::size_t to);
    void StoreInterior(std::uint32_t offset, PageHeader header, const TreeEntries& entries, std::size_t from,
                       std::size_t to);
    void SetNeighbour(std::uint32_t page, std::uint32_t left, std::uint32_t right, bool setLeft);

    void WriteLeaf(PageHeader header, Cut cut, bool lastChanged);
    void WriteInterior(std::size_t level, PageHeader header, TreeEntries& entries, bool lastChanged);
    // Spreads entries over new and old pages of one level; answers the entries for the level above.
    template <class Store>
    TreeEntries Spread(std::uint32_t first, PageHeader header, const TreeEntries& entries,
                       const std::vector<std::size_t>& ends, bool isRoot, Store store);
    // Makes the root an interior page over these children, with further levels between where they are needed.
    void GrowRoot(TreeEntries children);

    void ReplaceChild(std::size_t level, const TreeEntries& children);
    void RenameChild(std::size_t level, const std::byte* key, std::uint32_t record);
    void RemoveChild(std::size_t level);
    void Unlink(std::uint32_t offset, const PageHeader& header);
    void CollapseRoot();
    // Joins the leaf with a neighbour under the same parent when both fit into one page.
    bool JoinLeaf(const PageHeader& header);

    PageStore& pages_;
    KeyShape shape_;
    std::uint32_t root_;
    std::size_t capacity_;
    std::vector<Step> path_;  ///< interior pages from the root down
    std::uint32_t leaf_ = 0;
    LeafPage unpacked_;
    LeafLayout layout_;  ///< of the leaf that was loaded last
    TreeEntries entries_;
    TreeEntries neighbour_;  ///< of another page, or the entries of a leaf and new ones together
};

}  // namespace zu::dbf::cdx
