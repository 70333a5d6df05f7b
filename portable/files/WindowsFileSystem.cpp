#include <windows.h>

#include "portable/files/Path.h"
#include "portable/files/WindowsError.h"
#include "portable/files/WindowsFile.h"
#include "portable/files/WindowsPath.h"
#include "portable/text/Utf.h"

namespace zu::files {

namespace {

class FindHandle {
public:
    explicit FindHandle(HANDLE handle) noexcept : handle_(handle) {}
    FindHandle(const FindHandle&) = delete;
    FindHandle& operator=(const FindHandle&) = delete;
    ~FindHandle() {
        if (handle_ != INVALID_HANDLE_VALUE) FindClose(handle_);
    }
    HANDLE get() const noexcept { return handle_; }

private:
    HANDLE handle_;
};

class WindowsFileSystem final : public FileSystem {
public:
    std::unique_ptr<File> Open(const std::string& path, const OpenOptions& options) override {
        return std::make_unique<WindowsFile>(path, options);
    }

    bool Exists(const std::string& path) override {
        const DWORD attributes = GetFileAttributesW(ToWindowsPath(path).c_str());
        return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    }

    bool IsFolder(const std::string& path) override {
        const DWORD attributes = GetFileAttributesW(ToWindowsPath(path).c_str());
        return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    }

    void Remove(const std::string& path) override {
        if (!DeleteFileW(ToWindowsPath(path).c_str())) ThrowWindowsError(GetLastError(), path, "deleted");
    }

    void Replace(const std::string& from, const std::string& to) override {
        if (!MoveFileExW(ToWindowsPath(from).c_str(), ToWindowsPath(to).c_str(), MOVEFILE_REPLACE_EXISTING)) {
            ThrowWindowsError(GetLastError(), from, "renamed");
        }
    }

    std::vector<std::string> List(const std::string& folder) override {
        WIN32_FIND_DATAW entry;
        const FindHandle search(FindFirstFileW(ToWindowsPath(Join(folder, "*")).c_str(), &entry));
        if (search.get() == INVALID_HANDLE_VALUE) {
            const DWORD code = GetLastError();
            if (code == ERROR_FILE_NOT_FOUND && IsFolder(folder)) return {};  // a root that is empty
            ThrowWindowsError(code, folder, "listed");
        }
        std::vector<std::string> names;
        do {
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                names.push_back(text::ToUtf8(reinterpret_cast<const char16_t*>(entry.cFileName)));
            }
        } while (FindNextFileW(search.get(), &entry));
        return names;
    }
};

}  // namespace

FileSystem& SystemFiles() {
    static WindowsFileSystem files;
    return files;
}

}  // namespace zu::files
