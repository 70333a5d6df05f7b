#pragma once

#include <string>

#include "host/technologies/Maintenance.h"
#include "host/technologies/Technology.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Examines the files of a table: the header against the file, the deletion mark and the bytes of every field
/// of every record, every memo and that no two of them lie over each other, and every tag (order, separators,
/// links, each record once, each key the one that the record has).
///
/// What a process that died has left half-done is undone first, as whenever the table is opened; apart from
/// that nothing is changed. Locked when anybody else has the table. `progress` may be null.
technologies::CheckReport CheckTable(files::FileSystem& files, const std::string& path,
                                     const technologies::TechnologySettings& settings,
                                     technologies::Progress* progress);

}  // namespace zu::dbf::maintenance
