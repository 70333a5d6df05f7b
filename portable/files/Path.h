#pragma once

#include <string>
#include <string_view>

namespace zu::files {

/// Pieces of paths. Paths are UTF-8; on Windows "/" and "\" both separate, elsewhere only "/".
/// Pure text: nothing here asks the file system.

bool IsSeparator(char c) noexcept;
/// Starts at a root: "/x", on Windows "C:\x", "C:/x", "\\server\share\x".
bool IsAbsolute(std::string_view path) noexcept;

/// `folder` and `name` with one separator between them; an absolute `name` stands alone.
std::string Join(std::string_view folder, std::string_view name);
/// Everything in front of the last separator: "/a/b.dbf" -> "/a", "b.dbf" -> "", "/b" -> "/", "C:\b" ->
/// "C:\".
std::string_view Parent(std::string_view path) noexcept;
/// Everything behind the last separator (on Windows also behind the drive's colon).
std::string_view FileName(std::string_view path) noexcept;
/// The file name up to its last point; a point in front is no extension.
std::string_view Stem(std::string_view path) noexcept;
/// The last point of the file name and what follows; empty without one.
std::string_view Extension(std::string_view path) noexcept;
/// `path` with another extension (given with its point).
std::string WithExtension(std::string_view path, std::string_view extension);

/// Equal without regard to the case of letters (all scripts that code pages of tables hold).
bool SameName(std::string_view a, std::string_view b);

}  // namespace zu::files
