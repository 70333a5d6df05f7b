#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "portable/files/File.h"

namespace zu::dbf {

/// The files that belong to a table: the same name with another extension, found without regard to case (a
/// table copied from Windows may be ORDERS.DBF with orders.fpt).
class CompanionFiles {
public:
    CompanionFiles(files::FileSystem& files, std::string tablePath)
        : files_(files), tablePath_(std::move(tablePath)) {}

    /// The path of the companion with `extension` (given in small letters with its point); nothing when there
    /// is none.
    std::optional<std::string> Find(std::string_view extension);

private:
    files::FileSystem& files_;
    std::string tablePath_;
    std::optional<std::vector<std::string>> names_;  ///< of the folder, listed when first needed
};

/// The file in `folder` whose name is `name` without regard to case; one that has exactly this name comes
/// first.
std::optional<std::string> FindFile(files::FileSystem& files, std::string_view folder, std::string_view name);

}  // namespace zu::dbf
