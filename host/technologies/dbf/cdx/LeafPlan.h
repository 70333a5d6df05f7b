#pragma once

#include <cstddef>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "host/technologies/dbf/cdx/LeafLayout.h"
#include "host/technologies/dbf/cdx/TreeEntries.h"

namespace zu::dbf::cdx {

/// Where entries that do not fit into one leaf page any more are cut.
enum class Cut {
    Half,  ///< into two halves of about the same number of bytes
    Last   ///< the first page stays as full as it can: keys keep coming at the end
};

/// Divides the entries into runs that each fit into one leaf page of this layout. The answer holds the end of
/// each run; one element means that a single page takes all. No entries: no runs.
std::vector<std::size_t> PlanLeaves(const TreeEntries& entries, const KeyShape& shape,
                                    const LeafLayout& layout, Cut cut);

/// The bytes that the entries take in one page, whether they fit or not.
std::size_t PackedSize(const TreeEntries& entries, const KeyShape& shape, const LeafLayout& layout);

}  // namespace zu::dbf::cdx
