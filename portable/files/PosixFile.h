#pragma once

#include "portable/files/File.h"

namespace zu::files {

/// A file of a POSIX system.
///
/// Denying others (`OpenOptions::exclusive`) is an agreement among users of this class, by flock(2); byte
/// ranges are locked with open-file-description locks, which also exclude other handles of this process.
class PosixFile final : public File {
public:
    PosixFile(std::string path, const OpenOptions& options);
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;
    ~PosixFile() override;

    const std::string& path() const noexcept override { return path_; }
    std::uint64_t Size() const override;
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override;
    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override;
    void Truncate(std::uint64_t size) override;
    void Flush() override;
    std::unique_ptr<Mapping> Map() const override;
    bool TryLock(std::uint64_t offset, std::uint64_t length, LockMode mode) override;
    void Unlock(std::uint64_t offset, std::uint64_t length) override;

private:
    std::string path_;
    int descriptor_ = -1;
};

/// Throws the `zu::Error` for an errno value: "The file PATH cannot be ACTION: ...".
[[noreturn]] void ThrowPosixError(int code, const std::string& path, const char* action);

}  // namespace zu::files
