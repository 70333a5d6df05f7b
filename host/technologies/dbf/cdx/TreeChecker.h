#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/FindingList.h"
#include "host/technologies/dbf/cdx/InteriorPage.h"
#include "host/technologies/dbf/cdx/LeafPage.h"
#include "host/technologies/dbf/cdx/PageUse.h"

namespace zu::dbf::cdx {

/// An entry of the tree as the check remembers it.
struct CheckedEntry {
    std::vector<std::byte> key;
    std::uint32_t record = 0;
};

/// Checks the structure of one tree and hands out its entries in order.
class TreeChecker {
public:
    /// Takes each entry: key, record, offset of the leaf.
    using TakeEntry = std::function<void(const std::byte*, std::uint32_t, std::uint32_t)>;

    TreeChecker(CdxFile& file, PageUse& use, FindingList& findings, const KeyShape& shape, TakeEntry take)
        : file_(file), use_(use), findings_(findings), shape_(shape), take_(std::move(take)) {}

    void Check(std::uint32_t root);

private:
    struct Place {
        std::uint32_t offset = 0;
        PageHeader header;
    };

    // Each answers the last entry below the page, nothing when there is none or the page cannot be read.
    std::optional<CheckedEntry> CheckPage(std::uint32_t offset, std::size_t level);
    std::optional<CheckedEntry> CheckLeaf(PageBytes bytes, std::uint32_t offset);
    std::optional<CheckedEntry> CheckInterior(PageBytes bytes, std::uint32_t offset, std::size_t level);
    void CheckLinks();

    CdxFile& file_;
    PageUse& use_;
    FindingList& findings_;
    KeyShape shape_;
    TakeEntry take_;
    LeafPage leaf_;
    std::optional<CheckedEntry> last_;
    std::optional<std::size_t> leafLevel_;
    std::vector<std::vector<Place>> levels_;
};

}  // namespace zu::dbf::cdx
