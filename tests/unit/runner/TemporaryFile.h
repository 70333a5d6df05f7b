#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace zu::runner {

/// A file with a name of its own in the system's temporary folder; gone with the object.
class TemporaryFile {
public:
    TemporaryFile(std::wstring_view name, std::string_view bytes) {
        wchar_t folder[MAX_PATH + 1] = {};
        GetTempPathW(MAX_PATH, folder);
        path_ = folder + std::to_wstring(GetCurrentProcessId()) + L"-" + std::wstring(name);
        const HANDLE file = CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        CloseHandle(file);
    }
    ~TemporaryFile() { DeleteFileW(path_.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::wstring& path() const noexcept { return path_; }

private:
    std::wstring path_;
};

}  // namespace zu::runner
