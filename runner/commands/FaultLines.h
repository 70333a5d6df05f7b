#pragma once

#include <string>
#include <vector>

namespace zu::runner::commands {

class LinesOut;

/// The faults of a table for people, indented; the first few of them unless `all` are asked for: one damaged
/// page makes hundreds.
void TellFaults(LinesOut& out, const std::vector<std::wstring>& faults, bool all);

}  // namespace zu::runner::commands
