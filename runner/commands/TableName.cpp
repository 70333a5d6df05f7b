#include "runner/commands/TableName.h"

#include <windows.h>

#include "com/Bstr.h"
#include "com/SameText.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"
#include "runner/commands/WildcardMatch.h"

namespace zu::runner::commands {
namespace {

constexpr std::wstring_view kExtension = L".dbf";

[[noreturn]] void Fail(ErrorKind kind, std::wstring_view text) {
    throw Error(kind, text::ToUtf8(com::AsUtf16(text)));
}

bool IsSeparator(wchar_t c) noexcept {
    return c == L'\\' || c == L'/';
}

bool IsRooted(std::wstring_view path) noexcept {
    return !path.empty() && (IsSeparator(path[0]) || (path.size() > 1 && path[1] == L':'));
}

/// A full path; wildcards in it stay. The system's reading of a path would cut blanks and points at its end.
std::wstring FullPath(std::wstring_view path, const std::wstring& folder) {
    const std::wstring whole =
        IsRooted(path) || folder.empty() ? std::wstring(path) : folder + L'\\' + std::wstring(path);
    std::wstring full(GetFullPathNameW(whole.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(whole.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// How many characters of a path its folder takes, the separator at its end included.
std::size_t FolderLength(std::wstring_view path) {
    const std::size_t end = path.find_last_of(L"\\/:");
    return end == std::wstring_view::npos ? 0 : end + 1;
}

bool HasExtension(std::wstring_view name) {
    return name.size() > kExtension.size() &&
           com::SameText(name.substr(name.size() - kExtension.size()), kExtension);
}

std::wstring_view WithoutExtension(std::wstring_view name) {
    return HasExtension(name) ? name.substr(0, name.size() - kExtension.size()) : name;
}

bool IsDefinition(std::wstring_view word) {
    return word.find_first_of(L">|") != std::wstring_view::npos;
}

TableName Defined(std::wstring_view word) {
    const std::size_t mark = word.find(L'>');
    TableName name;
    name.database = word.substr(0, mark);
    if (mark != std::wstring_view::npos) name.table = word.substr(mark + 1);
    name.shown = word;
    return name;
}

/// The tables of `database` that match; `lead` is what the user wrote in front of the pattern.
std::vector<TableName> Matching(const std::wstring& database, std::wstring_view pattern,
                                std::wstring_view lead, const ListTables& list) {
    std::vector<TableName> names;
    for (std::wstring& table : list(database)) {
        if (WildcardMatch(pattern, table)) {
            std::wstring shown = std::wstring(lead) + table;
            names.push_back({database, std::move(table), std::move(shown)});
        }
    }
    if (names.empty())
        Fail(ErrorKind::NotFound, L"no table matches " + std::wstring(lead) + std::wstring(pattern));
    return names;
}

}  // namespace

TableName TableOf(std::wstring_view word, const std::wstring& folder) {
    if (word.empty()) Fail(ErrorKind::InvalidArgument, L"the name of the table is empty");
    if (IsDefinition(word)) return Defined(word);
    if (HasWildcard(word))
        Fail(ErrorKind::InvalidArgument,
             std::wstring(word) + L" may stand for several tables; this command takes one");
    const std::wstring path = FullPath(word, folder);
    if (IsFolder(path))
        Fail(ErrorKind::InvalidArgument, std::wstring(word) + L" is a folder; this command takes one table");
    const std::size_t length = FolderLength(path);
    return {path.substr(0, length), path.substr(length), std::wstring(word)};
}

std::vector<TableName> TablesOf(std::wstring_view word, const std::wstring& folder, const ListTables& list) {
    if (IsDefinition(word)) {
        TableName name = Defined(word);
        if (!HasWildcard(name.table)) return {std::move(name)};
        const std::wstring lead = name.database + L">";
        return Matching(name.database, name.table, lead, list);
    }
    if (!word.empty() && !HasWildcard(word)) {
        const std::wstring path = FullPath(word, folder);
        if (!IsFolder(path)) return {TableOf(word, folder)};
        std::wstring lead(word);
        if (!IsSeparator(lead.back())) lead += lead.find(L'/') == std::wstring::npos ? L'\\' : L'/';
        return Matching(path, L"*", lead, list);
    }
    const std::size_t length = FolderLength(word);
    if (word.empty() || HasWildcard(word.substr(0, length))) return {TableOf(word, folder)};
    // Other files that a shell's pattern catches are none of our business.
    std::wstring_view pattern = WithoutExtension(word.substr(length));
    if (pattern.ends_with(L".*")) pattern.remove_suffix(2);
    const std::wstring_view lead = word.substr(0, length);
    return Matching(FullPath(lead.empty() ? L"." : lead, folder), pattern, lead, list);
}

}  // namespace zu::runner::commands
