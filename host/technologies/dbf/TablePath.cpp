#include "host/technologies/dbf/TablePath.h"

#include <algorithm>
#include <optional>

#include "host/technologies/dbf/CompanionFiles.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf {

namespace {

constexpr std::string_view kExtension = ".dbf";

std::string_view Trimmed(std::string_view text) noexcept {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    return text;
}

std::string_view WithoutEndSeparators(std::string_view path) noexcept {
    while (path.size() > 1 && files::IsSeparator(path.back()) && path[path.size() - 2] != ':')
        path.remove_suffix(1);
    return path;
}

/// One step up: "..", also in the forms that Windows reduces to it (".. ", "...").
bool IsStepUp(std::string_view part) noexcept {
    return part.starts_with("..") && part.find_first_not_of(". ") == std::string_view::npos;
}

/// True when following `relative` from a folder ends or passes outside of it.
bool ClimbsOut(std::string_view relative) noexcept {
    int depth = 0;
    while (!relative.empty()) {
        std::size_t end = 0;
        while (end < relative.size() && !files::IsSeparator(relative[end]))
            ++end;
        const std::string_view part = relative.substr(0, end);
        if (IsStepUp(part)) {
            if (--depth < 0) return true;
        } else if (!part.empty() && part != ".") {
            ++depth;
        }
        relative.remove_prefix(end == relative.size() ? end : end + 1);
    }
    return false;
}

/// A name that starts in a folder: no root, no drive, no stream, no way out.
void RequireInside(std::string_view name, const char* what) {
    if (name.find('\0') != std::string_view::npos) {
        throw Error(ErrorKind::InvalidArgument,
                    "The " + std::string(what) + " name cannot be used: it contains a NUL character.");
    }
    const bool rooted = files::IsAbsolute(name) || (!name.empty() && files::IsSeparator(name.front()));
#ifdef _WIN32
    const bool hasColon = name.find(':') != std::string_view::npos;
#else
    const bool hasColon = false;
#endif
    if (rooted || hasColon || ClimbsOut(name)) {
        throw Error(ErrorKind::InvalidArgument, "The " + std::string(what) + " name \"" + std::string(name) +
                                                    "\" cannot be used: it leads out of its folder.");
    }
}

std::optional<std::string> FindNamed(files::FileSystem& files, const std::string& path) {
    const std::string_view folder = files::Parent(path);
    const std::string name(files::FileName(path));
    if (name.empty()) return std::nullopt;
    if (!files::SameName(files::Extension(name), kExtension)) {
        if (auto found = FindFile(files, folder, name + std::string(kExtension))) return found;
        // Tables with other extensions are named in full.
        if (files::Extension(name).empty()) return std::nullopt;
    }
    return FindFile(files, folder, name);
}

bool NamesTheFile(std::string_view table, const std::string& file) {
    return table.empty() || table == "1" || table == "2" || files::SameName(table, files::FileName(file)) ||
           files::SameName(table, files::Stem(file));
}

/// The folder or file that a database name means, whether it is there or not.
std::string BaseOf(std::string_view dataFolder, std::string_view database) {
    database = WithoutEndSeparators(Trimmed(database));
    if (!files::IsAbsolute(database)) RequireInside(database, "database");
    return database.empty() ? std::string(dataFolder) : files::Join(dataFolder, database);
}

[[noreturn]] void FailNoDatabase(const std::string& base) {
    throw Error(ErrorKind::NotFound, "The database " + base + " does not exist.");
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

/// Names of devices mean no file on Windows, whatever their extension.
bool IsDevice(std::string_view stem) {
    const std::string lower = LowerCase(stem.substr(0, stem.find('.')));
    if (lower == "con" || lower == "prn" || lower == "aux" || lower == "nul") return true;
    return lower.size() == 4 && (lower.starts_with("com") || lower.starts_with("lpt")) && lower[3] >= '1' &&
           lower[3] <= '9';
}

void RequireFileName(std::string_view name) {
    constexpr std::size_t kLongest = 200;  // leaves room for the names of the files beside the table
    const std::string_view stem = files::Stem(name);
    const bool strange = std::any_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 ||
               std::string_view("<>:\"|?*").find(c) != std::string_view::npos;
    });
    if (stem.empty() || stem.front() == '.' || stem.back() == ' ' || stem.back() == '.' || strange ||
        name.size() > kLongest || IsDevice(stem))
        throw Error(ErrorKind::InvalidArgument,
                    "\"" + std::string(name) + "\" cannot be the file name of a table.");
}

}  // namespace

std::string FindTable(files::FileSystem& files, std::string_view dataFolder, std::string_view database,
                      std::string_view table) {
    table = Trimmed(table);
    const std::string base = BaseOf(dataFolder, database);

    const bool isFolder = base.empty() || files.IsFolder(base);
    if (!isFolder) {
        if (const auto file = FindNamed(files, base)) {
            if (NamesTheFile(table, *file)) return *file;
            throw Error(ErrorKind::NotFound, "The database " + base + " is the single table " +
                                                 std::string(files::FileName(*file)) +
                                                 "; it has no table \"" + std::string(table) + "\".");
        }
        FailNoDatabase(base);
    }
    if (table.empty()) {
        throw Error(ErrorKind::InvalidArgument,
                    "The database " + base + " is a folder: a table name is needed.");
    }
    RequireInside(table, "table");
    if (auto found = FindNamed(files, files::Join(base, table))) return *found;
    throw Error(ErrorKind::NotFound,
                "The table \"" + std::string(table) + "\" does not exist in the folder " + base + ".");
}

std::string PathOfNewTable(files::FileSystem& files, std::string_view dataFolder, std::string_view database,
                           std::string_view table) {
    table = Trimmed(table);
    std::string path = BaseOf(dataFolder, database);
    const bool isFolder = path.empty() || files.IsFolder(path);
    if (isFolder) {
        if (table.empty())
            throw Error(ErrorKind::InvalidArgument,
                        "The database " + path + " is a folder: a table name is needed.");
        RequireInside(table, "table");
        path = files::Join(path, table);
    } else if (!NamesTheFile(table, path)) {
        FailNoDatabase(path);
    }
    if (!files::SameName(files::Extension(path), kExtension)) path += kExtension;
    RequireFileName(files::FileName(path));
    const std::string_view folder = files::Parent(path);
    if (!folder.empty() && !files.IsFolder(std::string(folder)))
        throw Error(ErrorKind::NotFound, "The folder " + std::string(folder) + " does not exist.");
    return path;
}

std::vector<std::string> TableNames(files::FileSystem& files, std::string_view dataFolder,
                                    std::string_view database) {
    const std::string base = BaseOf(dataFolder, database);
    if (!base.empty() && !files.IsFolder(base)) {
        if (const auto file = FindNamed(files, base)) return {std::string(files::Stem(*file))};
        FailNoDatabase(base);
    }
    std::vector<std::string> names;
    for (const std::string& name : files.List(base.empty() ? "." : base))
        if (files::SameName(files::Extension(name), kExtension)) names.emplace_back(files::Stem(name));
    std::sort(names.begin(), names.end(), [](const std::string& left, const std::string& right) {
        const std::string a = LowerCase(left);
        const std::string b = LowerCase(right);
        return a != b ? a < b : left < right;
    });
    return names;
}

}  // namespace zu::dbf
