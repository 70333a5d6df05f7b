#pragma once

#include <memory>

#include "portable/textio/LineReader.h"

namespace zu::component {

/// Keeps the text file of an import that an error ended open until the thread's apartment goes: such a file
/// stays in use, so that nobody replaces it before the error was looked into.
void KeepOpen(std::unique_ptr<textio::LineReader> file);

}  // namespace zu::component
