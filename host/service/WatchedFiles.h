#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "portable/files/File.h"

namespace zu::host {

/// A file system that remembers what the files looked like when they were opened through it, so that their
/// user can ask later whether anybody else has changed them. What was written through it is no change: its
/// writer knows of it. One thread at a time.
class WatchedFiles final : public files::FileSystem {
public:
    /// `files` must outlive this object.
    explicit WatchedFiles(files::FileSystem& files) : files_(files) {}

    /// Every file that was opened for reading, other than in passing, is still there with the size and the
    /// times that it had, or that it got when it was last written through this object. False when none was
    /// opened.
    bool AreUnchanged();

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
    /// Tells a file from another one that took its name.
    struct Identity {
        std::uint64_t number = 0;
        bool operator==(const Identity&) const = default;
    };
    struct Watched {
        std::string path;
        std::optional<Stamp> stamp;
        bool written = false;                             ///< through this object, since the stamp was taken
        std::optional<Identity> identity = std::nullopt;  ///< of the file that is written
    };
    class WrittenFile;

    static std::optional<Stamp> StampOf(const std::string& path);
    static std::optional<Identity> IdentityOf(const std::string& path);
    static bool IsUnchanged(Watched& file);

    files::FileSystem& files_;
    std::vector<std::shared_ptr<Watched>> watched_;
};

}  // namespace zu::host
