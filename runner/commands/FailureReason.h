#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zu::runner::commands {

class CommandListener;

/// Why a function that answers a failure value failed: its functions tell the log, not the caller. `fallback`
/// when there is nothing.
std::wstring ReasonOf(const CommandListener& listener, std::wstring_view fallback);

/// A note of the log without the number in front and the function's name behind.
std::wstring PlainNote(std::wstring_view note);

}  // namespace zu::runner::commands
