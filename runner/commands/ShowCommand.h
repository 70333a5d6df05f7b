#pragma once

namespace zu::runner::commands {

class CommandRun;

/// `zurun show`: the records of a table.
void RunShow(CommandRun& run);

}  // namespace zu::runner::commands
