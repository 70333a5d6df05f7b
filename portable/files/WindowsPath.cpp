#include "portable/files/WindowsPath.h"

#include <windows.h>

#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::files {

namespace {

/// Folders need room for an 8.3 name below MAX_PATH, hence less than 260.
constexpr std::size_t kClassicLimit = 247;

std::wstring FullPath(const std::wstring& path) {
    const DWORD needed = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (needed == 0) return path;
    std::wstring full(needed, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), needed, full.data(), nullptr);
    if (length == 0 || length >= needed) return path;
    full.resize(length);
    return full;
}

}  // namespace

std::wstring ToWindowsPath(std::string_view utf8) {
    const std::u16string characters = text::ToUtf16(utf8);
    std::wstring path(reinterpret_cast<const wchar_t*>(characters.data()), characters.size());
    if (path.find(L'\0') != std::wstring::npos) {
        throw Error(ErrorKind::InvalidArgument, "A file name contains a NUL character.");
    }
    if (path.starts_with(LR"(\\?\)") || path.starts_with(LR"(\\.\)")) return path;
    // A short relative name may still become long behind the current folder.
    std::wstring full = FullPath(path);
    if (full.size() <= kClassicLimit) return path;
    if (full.starts_with(LR"(\\)")) return LR"(\\?\UNC)" + full.substr(1);
    return LR"(\\?\)" + full;
}

}  // namespace zu::files
