#pragma once

namespace zu::runner::commands {

class CommandRun;

/// `zurun edit`: the grid with the records of a table, to change them.
void RunEdit(CommandRun& run);
/// `zurun pick`: the grid to choose a record from, which is written to standard output.
void RunPick(CommandRun& run);

}  // namespace zu::runner::commands
