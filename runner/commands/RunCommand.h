#pragma once

#include <string>
#include <vector>

namespace zu::runner {
class Console;
}

namespace zu::runner::commands {

/// Runs the command `name` with the words behind it, and answers the program's exit code; "help" is a command
/// too. Throws com::ComError when there is no engine, zu::Error (NotFound) when the data folder does not
/// exist.
int RunCommand(const std::wstring& name, const std::vector<std::wstring>& words, Console& console);

/// The word is the name of a command.
bool IsCommand(const std::wstring& word);

}  // namespace zu::runner::commands
