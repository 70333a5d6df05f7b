#pragma once

#include "portable/files/File.h"

namespace zu::files {

/// A file of Windows. Opened so that others may read, write, rename and delete it, unless exclusive. Its
/// reads and writes move one position, so it belongs to one thread at a time.
class WindowsFile final : public File {
public:
    WindowsFile(std::string path, const OpenOptions& options);
    WindowsFile(const WindowsFile&) = delete;
    WindowsFile& operator=(const WindowsFile&) = delete;
    ~WindowsFile() override;

    const std::string& path() const noexcept override { return path_; }
    std::uint64_t Size() const override;
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override;
    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override;
    void Truncate(std::uint64_t size) override;
    void Flush() override;
    /// Files on other computers are not mapped: a lost connection would be an access violation in the middle
    /// of a loop instead of an error.
    std::unique_ptr<Mapping> Map() const override;
    bool TryLock(std::uint64_t offset, std::uint64_t length, LockMode mode) override;
    void Unlock(std::uint64_t offset, std::uint64_t length) override;

private:
    bool GoTo(std::uint64_t offset) const noexcept;

    std::string path_;
    void* handle_;
};

}  // namespace zu::files
