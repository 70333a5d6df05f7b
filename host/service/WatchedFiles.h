#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "portable/files/File.h"

namespace zu::host {

/// A file system that remembers what the files looked like when they were opened through it, so that their
/// user can ask later whether anything has changed. One thread at a time.
class WatchedFiles final : public files::FileSystem {
public:
    /// `files` must outlive this object.
    explicit WatchedFiles(files::FileSystem& files) : files_(files) {}

    /// Every file that was opened is still there with the size and the times that it had. False when none
    /// was.
    bool AreUnchanged() const;

    std::unique_ptr<files::File> Open(const std::string& path, const files::OpenOptions& options) override;
    bool Exists(const std::string& path) override { return files_.Exists(path); }
    bool IsFolder(const std::string& path) override { return files_.IsFolder(path); }
    void Remove(const std::string& path) override { files_.Remove(path); }
    void Replace(const std::string& from, const std::string& to) override { files_.Replace(from, to); }
    std::vector<std::string> List(const std::string& folder) override { return files_.List(folder); }

private:
    struct Stamp {
        std::uint64_t size = 0;
        std::uint64_t created = 0;
        std::uint64_t written = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Watched {
        std::string path;
        std::optional<Stamp> stamp;
    };
    static std::optional<Stamp> StampOf(const std::string& path);

    files::FileSystem& files_;
    std::vector<Watched> watched_;
};

}  // namespace zu::host
