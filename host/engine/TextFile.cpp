#include "host/engine/TextFile.h"

#include <windows.h>

#include <cstring>
#include <memory>
#include <string_view>

namespace zu::host {
namespace {

constexpr DWORD kLargest = 1 << 20;

struct CloseFile {
    void operator()(HANDLE file) const noexcept { CloseHandle(file); }
};
using FileHandle = std::unique_ptr<void, CloseFile>;

std::optional<std::string> ReadBytes(const std::wstring& path) {
    HANDLE opened =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return std::nullopt;
    const FileHandle file(opened);
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.get(), &size) || size.QuadPart > kLargest) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        return std::nullopt;
    bytes.resize(read);
    return bytes;
}

/// Nothing when `bytes` are not text of the code page.
std::optional<std::wstring> Decode(std::string_view bytes, UINT codePage, DWORD flags) {
    if (bytes.empty()) return std::wstring();
    const int length =
        MultiByteToWideChar(codePage, flags, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
    if (length <= 0) return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, flags, bytes.data(), static_cast<int>(bytes.size()), text.data(), length);
    return text;
}

}  // namespace

std::optional<std::wstring> ReadTextFile(const std::wstring& path) {
    const auto bytes = ReadBytes(path);
    if (!bytes) return std::nullopt;
    std::string_view content = *bytes;
    if (content.starts_with("\xFF\xFE")) {
        std::wstring text((content.size() - 2) / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), content.data() + 2, text.size() * sizeof(wchar_t));
        return text;
    }
    if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
    if (auto text = Decode(content, CP_UTF8, MB_ERR_INVALID_CHARS)) return text;
    return Decode(content, CP_ACP, 0);
}

}  // namespace zu::host
