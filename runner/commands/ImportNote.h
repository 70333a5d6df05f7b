#pragma once

#include <string>
#include <string_view>

namespace zu::runner::commands {

/// A note of the log about a line that was not added; others concern the engine.
bool IsImportNote(std::wstring_view note);

/// The note as the user can follow it, when not `file` itself was read but a copy without its first `skipped`
/// lines.
std::wstring ImportNote(std::wstring_view note, std::wstring_view copy, std::wstring_view file,
                        unsigned skipped);

}  // namespace zu::runner::commands
