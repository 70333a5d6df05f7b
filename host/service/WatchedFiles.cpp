#include "host/service/WatchedFiles.h"

#include <windows.h>

#include <winternl.h>

#include <algorithm>
#include <utility>

#include "portable/files/WindowsPath.h"

namespace zu::host {
namespace {

/// The file's number on its volume, one 64-bit number; the header names only a few of the classes.
constexpr auto kFileInternalInformation = static_cast<FILE_INFORMATION_CLASS>(6);

std::uint64_t Whole(DWORD high, DWORD low) noexcept {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

}  // namespace

std::optional<WatchedFiles::Stamp> WatchedFiles::StampOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(files::ToWindowsPath(path).c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    return Stamp{Whole(data.nFileSizeHigh, data.nFileSizeLow),
                 Whole(data.ftCreationTime.dwHighDateTime, data.ftCreationTime.dwLowDateTime),
                 Whole(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime)};
}

std::optional<WatchedFiles::Identity> WatchedFiles::IdentityOf(const std::string& path) {
    const HANDLE file = CreateFileW(files::ToWindowsPath(path).c_str(), 0,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    // GetFileInformationByHandle asks for the volume as well, which costs many times as much. A path does not
    // move to another volume while a file that it named there is open.
    LARGE_INTEGER number{};
    IO_STATUS_BLOCK status{};
    const NTSTATUS result =
        NtQueryInformationFile(file, &status, &number, sizeof number, kFileInternalInformation);
    CloseHandle(file);
    if (result < 0) return std::nullopt;
    return Identity{static_cast<std::uint64_t>(number.QuadPart)};
}

/// Notes that its file is written. It may outlive the file system that it was opened through.
class WatchedFiles::WrittenFile final : public files::File {
public:
    WrittenFile(std::unique_ptr<files::File> file, std::shared_ptr<Watched> watched)
        : file_(std::move(file)), watched_(std::move(watched)) {}

    const std::string& path() const noexcept override { return file_->path(); }
    std::uint64_t Size() const override { return file_->Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override {
        return file_->ReadAt(offset, buffer);
    }
    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override {
        watched_->written = true;
        file_->WriteAt(offset, data);
    }
    void Truncate(std::uint64_t size) override {
        watched_->written = true;
        file_->Truncate(size);
    }
    void Flush() override { file_->Flush(); }
    std::unique_ptr<files::Mapping> Map() const override { return file_->Map(); }
    bool TryLock(std::uint64_t offset, std::uint64_t length, files::LockMode mode) override {
        return file_->TryLock(offset, length, mode);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override { file_->Unlock(offset, length); }

private:
    std::unique_ptr<files::File> file_;
    std::shared_ptr<Watched> watched_;
};

std::unique_ptr<files::File> WatchedFiles::Open(const std::string& path, const files::OpenOptions& options) {
    const auto known = std::find_if(watched_.begin(), watched_.end(),
                                    [&](const std::shared_ptr<Watched>& file) { return file->path == path; });
    if (options.access == files::Access::ReadWrite) {
        // Files that are only written, such as a journal, come and go.
        std::unique_ptr<files::File> file = files_.Open(path, options);
        if (known == watched_.end()) return file;
        (*known)->identity = IdentityOf(path);
        return std::make_unique<WrittenFile>(std::move(file), *known);
    }
    if (options.passing) return files_.Open(path, options);
    // The stamp is older than the opening: a change between the two then counts as one.
    std::optional<Stamp> stamp = StampOf(path);
    std::unique_ptr<files::File> file = files_.Open(path, options);
    watched_.push_back(std::make_shared<Watched>(Watched{path, stamp}));
    return file;
}

bool WatchedFiles::IsUnchanged(Watched& file) {
    const std::optional<Stamp> now = StampOf(file.path);
    if (file.written && now && file.identity && IdentityOf(file.path) == file.identity) {
        file.stamp = now;
        file.written = false;
        return true;
    }
    return file.stamp && now == file.stamp;
}

bool WatchedFiles::AreUnchanged() {
    return !watched_.empty() &&
           std::all_of(watched_.begin(), watched_.end(),
                       [](const std::shared_ptr<Watched>& file) { return IsUnchanged(*file); });
}

}  // namespace zu::host
