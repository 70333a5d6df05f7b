#pragma once

#include <string>
#include <vector>

namespace zu::runner {

/// The whole program for a command line (without the program's own name); answers its exit code.
int RunProgram(const std::vector<std::wstring>& words) noexcept;

}  // namespace zu::runner
