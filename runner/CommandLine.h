#pragma once

#include <optional>
#include <string>
#include <vector>

#include "runner/Language.h"

namespace zu::runner {

/// What the user asked for on the command line.
struct CommandLine {
    enum class Action { Run, Command, Help, Version };

    Action action = Action::Run;
    std::optional<std::wstring> code;        ///< the script itself (-e); otherwise `script` names it
    std::wstring script;                     ///< a path, or "-" for standard input; the name of a command
    std::optional<Language> language;        ///< when stated; otherwise by extension or guess
    std::optional<std::wstring> dataFolder;  ///< --data: where databases without a full path are looked for
    bool trace = false;                      ///< --trace: the engine's log to standard error
    std::vector<std::wstring> arguments;     ///< for the script; a command's also hold the options before it

    /// `words` are the program's arguments without its own name. Options of the runner stand before the
    /// script; what follows the script belongs to the script. A bare word that names a command stands for it.
    /// The options of cscript (//nologo and the like)
    /// are passed over wherever they stand, so that command lines written for it work. Throws zu::Error
    /// (InvalidArgument) with a text for the user.
    static CommandLine Parse(const std::vector<std::wstring>& words);
};

/// The text of --help.
std::wstring HelpText();

}  // namespace zu::runner
