#pragma once

#include <string>

namespace zu::files {

/// Throws the `zu::Error` for a system error code: "The file PATH cannot be ACTION: ...".
[[noreturn]] void ThrowWindowsError(unsigned long code, const std::string& path, const char* action);

}  // namespace zu::files
