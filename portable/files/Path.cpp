#include "portable/files/Path.h"

#include "portable/text/CaseMap.h"
#include "portable/text/Utf.h"

namespace zu::files {

namespace {

#ifdef _WIN32
constexpr bool kWindows = true;
constexpr char kSeparator = '\\';
#else
constexpr bool kWindows = false;
constexpr char kSeparator = '/';
#endif

bool HasDrive(std::string_view path) noexcept {
    if (!kWindows || path.size() < 2 || path[1] != ':') return false;
    const char drive = path[0];
    return (drive >= 'a' && drive <= 'z') || (drive >= 'A' && drive <= 'Z');
}

/// Where the file name begins.
std::size_t NameStart(std::string_view path) noexcept {
    std::size_t at = path.size();
    while (at > 0 && !IsSeparator(path[at - 1]))
        --at;
    return at == 0 && HasDrive(path) ? 2 : at;
}

}  // namespace

bool IsSeparator(char c) noexcept {
    return c == '/' || (kWindows && c == '\\');
}

bool IsAbsolute(std::string_view path) noexcept {
    if (!kWindows) return path.starts_with('/');
    if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) return true;
    return HasDrive(path) && path.size() >= 3 && IsSeparator(path[2]);
}

std::string Join(std::string_view folder, std::string_view name) {
    if (folder.empty() || IsAbsolute(name)) return std::string(name);
    std::string path(folder);
    if (!IsSeparator(path.back())) path.push_back(kSeparator);
    path += name;
    return path;
}

std::string_view Parent(std::string_view path) noexcept {
    std::size_t end = NameStart(path);
    const std::size_t root = HasDrive(path) ? 3 : 1;
    while (end > root && IsSeparator(path[end - 1]))
        --end;
    return path.substr(0, end);
}

std::string_view FileName(std::string_view path) noexcept {
    return path.substr(NameStart(path));
}

std::string_view Stem(std::string_view path) noexcept {
    const std::string_view name = FileName(path);
    return name.substr(0, name.size() - Extension(path).size());
}

std::string_view Extension(std::string_view path) noexcept {
    const std::string_view name = FileName(path);
    const std::size_t point = name.rfind('.');
    if (point == std::string_view::npos || point == 0) return {};
    return name.substr(point);
}

std::string WithExtension(std::string_view path, std::string_view extension) {
    std::string changed(path.substr(0, path.size() - Extension(path).size()));
    changed += extension;
    return changed;
}

bool SameName(std::string_view a, std::string_view b) {
    const std::u16string left = text::ToUtf16(a);
    const std::u16string right = text::ToUtf16(b);
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (left[i] != right[i] && text::ToUpper(left[i]) != text::ToUpper(right[i])) return false;
    }
    return true;
}

}  // namespace zu::files
