#pragma once

namespace zu::runner::commands {

class CommandRun;

/// `zurun check`: the faults of tables.
void RunCheck(CommandRun& run);

}  // namespace zu::runner::commands
