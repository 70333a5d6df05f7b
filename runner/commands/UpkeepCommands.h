#pragma once

namespace zu::runner::commands {

class CommandRun;

/// `zurun repair`: mends tables, and says what was done and what is left.
void RunRepair(CommandRun& run);
/// `zurun pack`: leaves out the records that are marked as deleted.
void RunPack(CommandRun& run);
/// `zurun reindex`: builds all tags anew.
void RunReindex(CommandRun& run);

}  // namespace zu::runner::commands
