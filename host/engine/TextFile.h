#pragma once

#include <optional>
#include <string>

namespace zu::host {

/// The content of a small text file (up to 1 MB): UTF-8 with or without a mark, UTF-16 little-endian with a
/// mark, else the ANSI code page. Nothing when it cannot be read or is longer.
std::optional<std::wstring> ReadTextFile(const std::wstring& path);

}  // namespace zu::host
