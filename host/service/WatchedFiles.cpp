#include "host/service/WatchedFiles.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "portable/files/WindowsPath.h"

namespace zu::host {
namespace {

/// Folders above a file can be exchanged without a trace in the file: its path is looked at this often.
constexpr std::uint64_t kPathTrusted = 100;
/// Three questions to the system cost more than a lookup does. What changes a file that was at rest is seen
/// this much later.
constexpr std::chrono::milliseconds kRestTrusted{1};
/// Times of files go in steps of up to two seconds: in the step of the last change another
/// one would not show. In units of 100 nanoseconds.
constexpr std::uint64_t kClockStep = 30'000'000;

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

WatchedFiles::Handle::Handle(const std::string& path) noexcept
    : handle_(CreateFileW(files::ToWindowsPath(path).c_str(), FILE_READ_ATTRIBUTES,
                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr)) {}

WatchedFiles::Handle::~Handle() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
}

std::uint64_t WatchedFiles::Handle::Changed() const noexcept {
    FILE_BASIC_INFO times{};
    if (handle_ == INVALID_HANDLE_VALUE ||
        !GetFileInformationByHandleEx(handle_, FileBasicInfo, &times, sizeof times))
        return 0;
    return static_cast<std::uint64_t>(times.ChangeTime.QuadPart);
}

std::optional<WatchedFiles::Stamp> WatchedFiles::Handle::Ask() const noexcept {
    FILE_BASIC_INFO times{};
    FILE_STANDARD_INFO size{};
    if (handle_ == INVALID_HANDLE_VALUE ||
        !GetFileInformationByHandleEx(handle_, FileBasicInfo, &times, sizeof times) ||
        !GetFileInformationByHandleEx(handle_, FileStandardInfo, &size, sizeof size) || size.DeletePending ||
        size.NumberOfLinks == 0)
        return std::nullopt;
    return Stamp{static_cast<std::uint64_t>(size.EndOfFile.QuadPart),
                 static_cast<std::uint64_t>(times.CreationTime.QuadPart),
                 static_cast<std::uint64_t>(times.LastWriteTime.QuadPart)};
}

/// A file that was opened through a WatchedFiles, which it may outlive.
class WatchedFiles::OpenedFile : public files::File {
public:
    OpenedFile(std::unique_ptr<files::File> file, std::shared_ptr<Watched> watched)
        : watched_(std::move(watched)), file_(std::move(file)) {}

    const std::string& path() const noexcept override { return file_->path(); }
    std::uint64_t Size() const override { return file_->Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const override {
        return file_->ReadAt(offset, buffer);
    }
    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override {
        file_->WriteAt(offset, data);
    }
    void Truncate(std::uint64_t size) override { file_->Truncate(size); }
    void Flush() override { file_->Flush(); }
    std::unique_ptr<files::Mapping> Map() const override { return file_->Map(); }
    bool TryLock(std::uint64_t offset, std::uint64_t length, files::LockMode mode) override {
        return file_->TryLock(offset, length, mode);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override { file_->Unlock(offset, length); }

protected:
    std::shared_ptr<Watched> watched_;

private:
    std::unique_ptr<files::File> file_;
};

/// The file is asked for its times only as long as its user has it open.
class WatchedFiles::KeptFile final : public OpenedFile {
public:
    KeptFile(std::unique_ptr<files::File> file, std::shared_ptr<Watched> watched)
        : OpenedFile(std::move(file), std::move(watched)) {
        watched_->isOpen = true;
    }
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;
    ~KeptFile() override {
        watched_->isOpen = false;
        watched_->handle.reset();
    }
};

/// Notes that its file is written.
class WatchedFiles::WrittenFile final : public OpenedFile {
public:
    using OpenedFile::OpenedFile;

    void WriteAt(std::uint64_t offset, std::span<const std::byte> data) override {
        watched_->written = true;
        OpenedFile::WriteAt(offset, data);
    }
    void Truncate(std::uint64_t size) override {
        watched_->written = true;
        OpenedFile::Truncate(size);
    }
};

WatchedFiles::Handle* WatchedFiles::HandleOf(Watched& file) {
    if (!file.handle && file.isOpen) file.handle = std::make_unique<Handle>(file.path);
    return file.handle.get();
}

std::unique_ptr<files::File> WatchedFiles::Open(const std::string& path, const files::OpenOptions& options) {
    const auto known = std::find_if(watched_.rbegin(), watched_.rend(),
                                    [&](const std::shared_ptr<Watched>& file) { return file->path == path; });
    if (options.access == files::Access::ReadWrite) {
        // Files that are only written, such as a journal, come and go.
        std::unique_ptr<files::File> file = files_.Open(path, options);
        if (known == watched_.rend()) return file;
        // What is written is not known by its times any more, so the file itself must be.
        HandleOf(**known);
        return std::make_unique<WrittenFile>(std::move(file), *known);
    }
    if (options.passing) return files_.Open(path, options);
    auto watched = std::make_shared<Watched>();
    watched->path = path;
    // The stamp is older than the opening: a change between the two then counts as one.
    watched->stamp = StampOf(path);
    auto file = std::make_unique<KeptFile>(files_.Open(path, options), watched);
    watched_.push_back(std::move(watched));
    rested_.reset();
    return file;
}

// A path costs the system many times what an open file does.
bool WatchedFiles::IsUnchanged(Watched& file) {
    const Handle* const handle = HandleOf(file);
    if (!handle) return !file.written && file.stamp && StampOf(file.path) == file.stamp;
    const std::uint64_t changed = handle->Changed();
    const bool isTrusted =
        changed != 0 && changed == file.changed && GetTickCount64() - file.when < kPathTrusted;
    return isTrusted || IsUnchangedByItsPath(file, *handle, changed);
}

// The path leads to the open file when both have the same size and times; a file that took its name has not.
bool WatchedFiles::IsUnchangedByItsPath(Watched& file, const Handle& handle, std::uint64_t changed) {
    const std::optional<Stamp> stamp = StampOf(file.path);
    if (!stamp || handle.Ask() != stamp || (!file.written && stamp != file.stamp)) return false;
    file.stamp = stamp;
    file.written = false;
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    const std::uint64_t clock = Whole(time.dwHighDateTime, time.dwLowDateTime);
    const bool isSettled = changed < clock && clock - changed > kClockStep;
    file.changed = isSettled ? changed : 0;
    file.when = GetTickCount64();
    return true;
}

bool WatchedFiles::AreUnchanged() {
    const Clock::time_point now = Clock::now();
    if (rested_ && now - *rested_ < kRestTrusted) return true;
    rested_.reset();
    if (watched_.empty() ||
        !std::all_of(watched_.begin(), watched_.end(),
                     [](const std::shared_ptr<Watched>& file) { return IsUnchanged(*file); }))
        return false;
    if (std::all_of(watched_.begin(), watched_.end(),
                    [](const std::shared_ptr<Watched>& file) { return file->changed != 0; }))
        rested_ = now;
    return true;
}

}  // namespace zu::host
