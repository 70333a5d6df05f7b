#pragma once

#include <string>

namespace zu::samples {

/// Makes a folder and those above it that are missing. One that cannot be made shows itself when a file is
/// made in it.
void MakeFolder(const std::string& path);

}  // namespace zu::samples
