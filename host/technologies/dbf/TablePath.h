#pragma once

#include <string>
#include <string_view>
#include <vector>

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

/// Where a new table of this database and name is made: the same rules, but the file need not exist. The
/// folder must (NotFound). InvalidArgument also for names that Windows does not allow, so that tables can
/// move there.
std::string PathOfNewTable(files::FileSystem& files, std::string_view dataFolder, std::string_view database,
                           std::string_view table);

/// The names of the tables of a database, without ".dbf", sorted without regard to case. NotFound when there
/// is no such folder or table file.
std::vector<std::string> TableNames(files::FileSystem& files, std::string_view dataFolder,
                                    std::string_view database);

}  // namespace zu::dbf
