#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/IndexContext.h"

namespace zu::dbf::cdx {

/// One thing that a check of an index file found.
struct Finding {
    enum class Weight {
        Fault,  ///< the index is wrong
        Remark  ///< nothing that changes an answer: unused pages, a key that cannot be recomputed
    };

    Weight weight = Weight::Fault;
    std::string tag;         ///< empty: the file as a whole
    std::uint32_t page = 0;  ///< offset of the page or header where it was found
    std::string text;

    /// "tag NAME, page at offset 1536: text"
    std::string Describe() const;
};

/// Checks everything about an index file that can be checked: the structure of each tree (page offsets,
/// attributes, counts, lengths, free space, order, separators, sibling links, circles, pages used twice), the
/// list of free pages, and against the table: record numbers, each record once, each key as the record's
/// values give it now. Fails only for errors of the file itself; at most a few dozen findings are kept for
/// each tag.
std::vector<Finding> CheckCdx(CdxFile& file, const IndexContext& context);

/// There is a fault among the findings.
bool HasFaults(const std::vector<Finding>& findings) noexcept;

}  // namespace zu::dbf::cdx
