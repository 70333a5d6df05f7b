#pragma once

namespace zu::runner::commands {

class CommandRun;

/// `zurun import`: appends the lines of a text file to a table.
void RunImport(CommandRun& run);

}  // namespace zu::runner::commands
