#pragma once

#include <string>

namespace zu::runner::commands {

/// Throws zu::Error (InvalidArgument) when the path is that of a table, memo or index file by its extension:
/// no text file has such a name, and writing one would destroy a table.
void RequireTextFile(const std::wstring& path);

}  // namespace zu::runner::commands
