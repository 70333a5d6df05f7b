#pragma once

#include <string>
#include <vector>

#include "host/technologies/Maintenance.h"
#include "host/technologies/Technology.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Mends what CheckTable finds, as far as it can be mended: the count of records (only whole records stay),
/// deletion marks that are none, the flags of the header, memos that cannot be read (left out) or that lie
/// over each other (each field gets its own), and the index, which is built anew. Values that are none in
/// their fields stay as they are. A journal that contradicts itself is set aside.
///
/// The old files stay beside the table, with ".bak" behind their names (".bak2", ... when that is there
/// already). Answers what was done, one sentence each; nothing when there was nothing to mend. Unsupported
/// for tables that are not written, Damaged when the header cannot be read; Locked when anybody else has the
/// table. A failure leaves everything as it was. `progress` may be null.
std::vector<std::string> RepairTable(files::FileSystem& files, const std::string& path,
                                     const technologies::TechnologySettings& settings,
                                     technologies::Progress* progress);

}  // namespace zu::dbf::maintenance
