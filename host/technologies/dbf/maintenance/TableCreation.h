#pragma once

#include <string>
#include <vector>

#include "host/technologies/Maintenance.h"
#include "host/technologies/Technology.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Makes an empty table in the file at `path`, with its memo file when a field needs one and with a default
/// tag when `key` is not empty. Everything is written under other names first: on an error, and whenever the
/// process ends in between, there is no table.
///
/// Fields become those of PlanFields. The code page is that of the settings. Errors: AlreadyExists, those of
/// PlanFields, MakeHeader and DefaultTag, and those of the file system.
void CreateTable(files::FileSystem& files, const std::string& path,
                 const technologies::TechnologySettings& settings,
                 const std::vector<technologies::FieldDescription>& fields,
                 const std::vector<technologies::IndexField>& key);

/// Removes a table with its memo file, its production index and what else lies there for it alone. Locked
/// when anybody has it open. It is gone as a whole: a removal that was broken off is finished by the next one
/// who looks for the table.
void DropTable(files::FileSystem& files, const std::string& path);

}  // namespace zu::dbf::maintenance
