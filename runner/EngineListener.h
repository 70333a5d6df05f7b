#pragma once

#include <atomic>
#include <functional>

#include "runner/NamedMembers.h"
#include "runner/ProgressLine.h"

namespace zu::runner {

class TextOutput;

/// Is told the engine's reports (Report) and its log (Trace) as they happen, and how far its long jobs are
/// (Progress, ProgressEnd), and shows them.
class EngineListener final : public NamedMembers {
public:
    /// A job ends when `interrupted` answers true; `stop` is called then, to end the script too. `working`
    /// tells other threads that a job is watched.
    EngineListener(TextOutput& output, const std::function<bool()>& interrupted,
                   const std::function<void()>& stop, std::atomic<bool>& working);

private:
    ProgressLine progress_;
};

}  // namespace zu::runner
