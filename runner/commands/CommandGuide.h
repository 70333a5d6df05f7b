#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runner/commands/CommandWords.h"

namespace zu::runner::commands {

class CommandRun;

/// What there is to know of a command, for the program and for people.
struct CommandDescription {
    const wchar_t* name;
    const wchar_t* usage;    ///< the operands
    const wchar_t* summary;  ///< one line
    const wchar_t* details;  ///< lines of help; may be empty
    std::size_t least;       ///< operands
    std::size_t most;
    std::vector<OptionDescription> options;
    void (*run)(CommandRun&);
};

/// All commands but help, in the order in which people are shown them.
std::span<const CommandDescription> AllCommands();
/// The command of this name, in whatever case; null when there is none. "help" is none.
const CommandDescription* FindCommand(std::wstring_view name);
/// The command that a mistyped word may have meant: at most two letters are wrong, missing, too many or
/// swapped.
std::optional<std::wstring> ClosestCommand(std::wstring_view word);

/// The help text of one command, and the list of all of them for the general help.
std::wstring CommandHelp(const CommandDescription& command);
std::wstring CommandList();

}  // namespace zu::runner::commands
