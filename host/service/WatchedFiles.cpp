#include "host/service/WatchedFiles.h"

#include <windows.h>

#include <algorithm>

#include "portable/files/WindowsPath.h"

namespace zu::host {
namespace {

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

std::unique_ptr<files::File> WatchedFiles::Open(const std::string& path, const files::OpenOptions& options) {
    // The stamp is older than the opening: a change between the two then counts as one.
    std::optional<Stamp> stamp = StampOf(path);
    std::unique_ptr<files::File> file = files_.Open(path, options);
    watched_.push_back({path, stamp});
    return file;
}

bool WatchedFiles::AreUnchanged() const {
    return !watched_.empty() && std::all_of(watched_.begin(), watched_.end(), [](const Watched& file) {
        return file.stamp && StampOf(file.path) == file.stamp;
    });
}

}  // namespace zu::host
