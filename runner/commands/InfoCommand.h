#pragma once

namespace zu::runner::commands {

class CommandRun;

/// `zurun info`: what is to be known of tables.
void RunInfo(CommandRun& run);

}  // namespace zu::runner::commands
