#include "runner/commands/FaultLines.h"

#include <algorithm>

#include "runner/commands/LinesOut.h"
#include "runner/commands/NumberText.h"

namespace zu::runner::commands {
namespace {

constexpr std::size_t kMostShown = 10;

}  // namespace

void TellFaults(LinesOut& out, const std::vector<std::wstring>& faults, bool all) {
    const std::size_t shown = all ? faults.size() : std::min(faults.size(), kMostShown);
    for (std::size_t i = 0; i < shown; ++i)
        out.Line(L"  " + faults[i]);
    if (shown < faults.size())
        out.Line(L"  ... and " + Grouped(static_cast<long long>(faults.size() - shown)) +
                     L" more, which --all shows",
                 Style::Faint);
}

}  // namespace zu::runner::commands
