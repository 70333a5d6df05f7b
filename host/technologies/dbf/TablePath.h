#pragma once

#include <string>
#include <string_view>

#include "portable/files/File.h"

namespace zu::dbf {

/// The file that a database and a table name mean.
///
/// `database` is a folder, absolute or below `dataFolder`; empty means `dataFolder` itself. `table` is a file
/// in it; the extension ".dbf" may be left out. When `database` names a single table file (with or without
/// its extension), `table` may be empty, "1", "2", or that file's own name. Files are found without regard to
/// case.
///
/// Errors: InvalidArgument for a name that is empty, or that leads out of the folder it starts in; NotFound.
std::string FindTable(files::FileSystem& files, std::string_view dataFolder, std::string_view database,
                      std::string_view table);

}  // namespace zu::dbf
