#pragma once

namespace zu::runner::commands {

class CommandRun;

/// `zurun export`: the records of tables as text files.
void RunExport(CommandRun& run);

}  // namespace zu::runner::commands
