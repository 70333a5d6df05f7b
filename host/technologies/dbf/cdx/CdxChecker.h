#pragma once

#include <vector>

#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/Finding.h"
#include "host/technologies/dbf/cdx/IndexContext.h"

namespace zu::dbf::cdx {

/// Checks everything about an index file that can be checked: the structure of each tree (page offsets,
/// attributes, counts, lengths, free space, order, separators, sibling links, circles, pages used twice), the
/// list of free pages, and against the table: record numbers, each record once, each key as the record's
/// values give it now. Fails only for errors of the file itself; at most a few dozen findings are kept for
/// each tag.
std::vector<Finding> CheckCdx(CdxFile& file, const IndexContext& context);

}  // namespace zu::dbf::cdx
