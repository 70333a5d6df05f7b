#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/technologies/dbf/cdx/CdxFile.h"

namespace zu::dbf::cdx {

/// A tag as the directory of an index file lists it.
struct DirectoryEntry {
    std::string
        name;  ///< bytes as stored, without the padding; empty in a file that is one index without tags
    std::uint32_t header = 0;  ///< offset of the tag's header
};

/// Lists the tags of an index file in the order in which their headers lie. A compact IDX file, which is a
/// single index, counts as one tag without a name. Damaged or Unsupported when the file is no index that can
/// be read.
std::vector<DirectoryEntry> ReadTagDirectory(CdxFile& file);

}  // namespace zu::dbf::cdx
