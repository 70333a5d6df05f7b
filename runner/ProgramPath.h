#pragma once

#include <string>

namespace zu::runner {

/// The full path of the running program.
std::wstring ProgramPath();

/// The folder part of a path, without the separator at its end.
std::wstring FolderOf(const std::wstring& path);

}  // namespace zu::runner
