#pragma once

#include <string>
#include <vector>

#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Copies of files that are about to be replaced. They go away again unless they are kept.
class FileBackup {
public:
    explicit FileBackup(files::FileSystem& files) noexcept : files_(files) {}
    ~FileBackup();
    FileBackup(const FileBackup&) = delete;
    FileBackup& operator=(const FileBackup&) = delete;

    /// Copies the file at `path` to the first free one of path.bak, path.bak2, ... and answers that name.
    std::string Copy(const std::string& path);
    /// From here on the copies stay.
    void Keep() noexcept { copies_.clear(); }

private:
    std::string FreeName(const std::string& path);

    files::FileSystem& files_;
    std::vector<std::string> copies_;
};

}  // namespace zu::dbf::maintenance
