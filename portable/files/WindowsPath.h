#pragma once

#include <string>
#include <string_view>

namespace zu::files {

/// A path as the wide functions of Windows take it. Longer paths than the classic limit get the prefix that
/// lifts it, for which they are made absolute and freed of "." and "..". Throws InvalidArgument for a NUL.
std::wstring ToWindowsPath(std::string_view utf8);

}  // namespace zu::files
