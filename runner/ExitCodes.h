#pragma once

namespace zu::runner {

// Exit codes of the program. All are below 126, because shells and emulators cut codes to 7 or 8 bits; a
// script's own `Quit code` is handed on as it is.
inline constexpr int kExitDone = 0;
inline constexpr int kExitScriptError = 1;      ///< the script stopped with an error, which has been reported
inline constexpr int kExitFailed = 1;           ///< a command could not do its work on all of the tables
inline constexpr int kExitFaultsFound = 2;      ///< a command found faults in a table and left them alone
inline constexpr int kExitUsage = 64;           ///< the command line cannot be understood
inline constexpr int kExitNoInput = 66;         ///< the script file cannot be read
inline constexpr int kExitNoScriptEngine = 70;  ///< the system has no engine for the script's language
inline constexpr int kExitUntold = 74;          ///< a failure whose reason could be written nowhere
inline constexpr int kExitInterrupted = 130;    ///< Ctrl+C

}  // namespace zu::runner
