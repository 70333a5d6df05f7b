#pragma once

#include <map>

#include "portable/files/File.h"

namespace zu::files {

/// A file system in memory, for tests and fuzzing: paths are plain names in one flat map, a folder exists
/// when some file lies in it. Handles of one file share its content, its denials and its locks as processes
/// would.
///
/// Mappings are copies of exact size, so that address checking sees every read outside the file; a later
/// write does not show in them.
class MemoryFiles final : public FileSystem {
public:
    MemoryFiles();
    ~MemoryFiles() override;

    std::unique_ptr<File> Open(const std::string& path, const OpenOptions& options) override;
    bool Exists(const std::string& path) override;
    bool IsFolder(const std::string& path) override;
    void Remove(const std::string& path) override;
    void Replace(const std::string& from, const std::string& to) override;
    std::vector<std::string> List(const std::string& folder) override;

    /// Puts a file in place, or replaces its content.
    void Put(const std::string& path, std::span<const std::byte> content);
    /// The content of a file; throws NotFound.
    std::vector<std::byte> Get(const std::string& path) const;
    /// Whether files can be mapped (as at first) or must be read.
    void AllowMapping(bool allowed) noexcept { mapping_ = allowed; }
    /// Calls of ReadAt on all files since the start.
    std::size_t reads() const noexcept { return *reads_; }

    struct Content;

private:
    std::map<std::string, std::shared_ptr<Content>> files_;
    std::shared_ptr<std::size_t> reads_;
    bool mapping_ = true;
};

}  // namespace zu::files
