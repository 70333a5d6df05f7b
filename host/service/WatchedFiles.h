#pragma once

#include <chrono>
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
    /// opened. Files at rest are asked once in a millisecond.
    bool AreUnchanged();

    std::unique_ptr<files::File> Open(const std::string& path, const files::OpenOptions& options) override;
    bool Exists(const std::string& path) override { return files_.Exists(path); }
    bool IsFolder(const std::string& path) override { return files_.IsFolder(path); }
    void Remove(const std::string& path) override { files_.Remove(path); }
    void Replace(const std::string& from, const std::string& to) override { files_.Replace(from, to); }
    std::vector<std::string> List(const std::string& folder) override { return files_.List(folder); }

private:
    using Clock = std::chrono::steady_clock;

    struct Stamp {
        std::uint64_t size = 0;
        std::uint64_t created = 0;
        std::uint64_t written = 0;
        bool operator==(const Stamp&) const = default;
    };
    /// Keeps a file open to ask for its times; denies nobody anything.
    class Handle {
    public:
        explicit Handle(const std::string& path) noexcept;
        Handle(const Handle&) = delete;
        Handle& operator=(const Handle&) = delete;
        ~Handle();

        /// When the file was last written, renamed or deleted; 0 when that is not known.
        std::uint64_t Changed() const noexcept;
        /// Nothing for a file that has no name any more.
        std::optional<Stamp> Ask() const noexcept;

    private:
        void* handle_;
    };
    struct Watched {
        std::string path;
        std::optional<Stamp> stamp;
        bool written = false;            ///< through this object, since the stamp was taken
        bool isOpen = false;             ///< by whoever opened it for reading
        std::unique_ptr<Handle> handle;  ///< once it was asked for
        std::uint64_t changed = 0;       ///< as of the last look at the path; 0: look again
        std::uint64_t when = 0;          ///< of that look, in milliseconds of the system's clock
    };
    class OpenedFile;
    class KeptFile;
    class WrittenFile;

    static std::optional<Stamp> StampOf(const std::string& path);
    static bool IsUnchanged(Watched& file);
    static bool IsUnchangedByItsPath(Watched& file, const Handle& handle, std::uint64_t changed);
    /// Null when the file is not open.
    static Handle* HandleOf(Watched& file);

    files::FileSystem& files_;
    std::vector<std::shared_ptr<Watched>> watched_;
    std::optional<Clock::time_point> rested_;  ///< when all files were asked last, and at rest
};

}  // namespace zu::host
