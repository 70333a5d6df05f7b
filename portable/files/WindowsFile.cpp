#include "portable/files/WindowsFile.h"

#include <windows.h>

#include <algorithm>

#include "portable/error/Error.h"
#include "portable/files/WindowsError.h"
#include "portable/files/WindowsPath.h"

namespace zu::files {

namespace {

/// One call reads or writes at most this much: network redirectors refuse more.
constexpr std::size_t kLargestTransfer = 32U << 20;

/// In a 32-bit process the address space is scarcer than the time that reading costs.
constexpr std::uint64_t kLargestMapping = sizeof(void*) == 4 ? 256U << 20 : std::uint64_t{1} << 42;

class WindowsMapping final : public Mapping {
public:
    WindowsMapping(const void* address, std::size_t size) noexcept : address_(address), size_(size) {}
    WindowsMapping(const WindowsMapping&) = delete;
    WindowsMapping& operator=(const WindowsMapping&) = delete;
    ~WindowsMapping() override { UnmapViewOfFile(address_); }
    std::span<const std::byte> bytes() const noexcept override {
        return {static_cast<const std::byte*>(address_), size_};
    }

private:
    const void* address_;
    std::size_t size_;
};

OVERLAPPED At(std::uint64_t offset) noexcept {
    OVERLAPPED position{};
    position.Offset = static_cast<DWORD>(offset);
    position.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return position;
}

DWORD Disposition(Creation creation) noexcept {
    switch (creation) {
        case Creation::CreateNew:
            return CREATE_NEW;
        case Creation::CreateAlways:
            return CREATE_ALWAYS;
        default:
            return OPEN_EXISTING;
    }
}

}  // namespace

WindowsFile::WindowsFile(std::string path, const OpenOptions& options) : path_(std::move(path)) {
    const std::wstring name = ToWindowsPath(path_);
    const DWORD access = options.access == Access::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const DWORD share = options.exclusive ? 0 : FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    handle_ = CreateFileW(name.c_str(), access, share, nullptr, Disposition(options.creation),
                          FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle_ == INVALID_HANDLE_VALUE) {
        const DWORD code = GetLastError();
        const DWORD attributes = GetFileAttributesW(name.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            throw Error(ErrorKind::AccessDenied, "The file " + path_ + " cannot be opened: it is a folder.");
        }
        ThrowWindowsError(code, path_, "opened");
    }
    if (GetFileType(handle_) != FILE_TYPE_DISK) {
        CloseHandle(handle_);
        throw Error(ErrorKind::Unsupported, "The file " + path_ + " cannot be opened: it is no plain file.");
    }
}

WindowsFile::~WindowsFile() {
    CloseHandle(handle_);
}

std::uint64_t WindowsFile::Size() const {
    LARGE_INTEGER size;
    if (!GetFileSizeEx(handle_, &size)) ThrowWindowsError(GetLastError(), path_, "read");
    return static_cast<std::uint64_t>(size.QuadPart);
}

// With an OVERLAPPED the system also notes the end of the transfer for completion ports, which nobody here
// waits on; where that is a message to a server it costs ten times what the transfer of a few bytes does.
bool WindowsFile::GoTo(std::uint64_t offset) const noexcept {
    LARGE_INTEGER position;
    position.QuadPart = static_cast<LONGLONG>(offset);
    return SetFilePointerEx(handle_, position, nullptr, FILE_BEGIN);
}

std::size_t WindowsFile::ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const auto wanted = static_cast<DWORD>(std::min(buffer.size() - done, kLargestTransfer));
        DWORD got = 0;
        if (!GoTo(offset + done) || !ReadFile(handle_, buffer.data() + done, wanted, &got, nullptr)) {
            const DWORD code = GetLastError();
            if (code == ERROR_HANDLE_EOF) break;
            ThrowWindowsError(code, path_, "read");
        }
        if (got == 0) break;
        done += got;
    }
    return done;
}

void WindowsFile::WriteAt(std::uint64_t offset, std::span<const std::byte> data) {
    std::size_t done = 0;
    while (done < data.size()) {
        const auto wanted = static_cast<DWORD>(std::min(data.size() - done, kLargestTransfer));
        DWORD put = 0;
        if (!GoTo(offset + done) || !WriteFile(handle_, data.data() + done, wanted, &put, nullptr)) {
            ThrowWindowsError(GetLastError(), path_, "written");
        }
        if (put == 0) ThrowWindowsError(ERROR_DISK_FULL, path_, "written");
        done += put;
    }
}

void WindowsFile::Truncate(std::uint64_t size) {
    FILE_END_OF_FILE_INFO end{};
    end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
    if (!SetFileInformationByHandle(handle_, FileEndOfFileInfo, &end, sizeof end)) {
        ThrowWindowsError(GetLastError(), path_, "resized");
    }
}

void WindowsFile::Flush() {
    if (!FlushFileBuffers(handle_)) ThrowWindowsError(GetLastError(), path_, "written");
}

std::unique_ptr<Mapping> WindowsFile::Map() const {
    const std::uint64_t size = Size();
    if (size == 0 || size > kLargestMapping) return nullptr;
    FILE_REMOTE_PROTOCOL_INFO remote{};
    if (GetFileInformationByHandleEx(handle_, FileRemoteProtocolInfo, &remote, sizeof remote)) return nullptr;

    void* const section = CreateFileMappingW(handle_, nullptr, PAGE_READONLY, static_cast<DWORD>(size >> 32),
                                             static_cast<DWORD>(size), nullptr);
    if (!section) return nullptr;
    const void* const address = MapViewOfFile(section, FILE_MAP_READ, 0, 0, static_cast<SIZE_T>(size));
    CloseHandle(section);  // the view keeps the section
    if (!address) return nullptr;
    return std::make_unique<WindowsMapping>(address, static_cast<std::size_t>(size));
}

bool WindowsFile::TryLock(std::uint64_t offset, std::uint64_t length, LockMode mode) {
    OVERLAPPED position = At(offset);
    const DWORD flags =
        LOCKFILE_FAIL_IMMEDIATELY | (mode == LockMode::Exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0);
    if (LockFileEx(handle_, flags, 0, static_cast<DWORD>(length), static_cast<DWORD>(length >> 32),
                   &position)) {
        return true;
    }
    const DWORD code = GetLastError();
    if (code == ERROR_LOCK_VIOLATION || code == ERROR_IO_PENDING) return false;
    ThrowWindowsError(code, path_, "locked");
}

void WindowsFile::Unlock(std::uint64_t offset, std::uint64_t length) {
    OVERLAPPED position = At(offset);
    if (!UnlockFileEx(handle_, 0, static_cast<DWORD>(length), static_cast<DWORD>(length >> 32), &position)) {
        ThrowWindowsError(GetLastError(), path_, "unlocked");
    }
}

}  // namespace zu::files
