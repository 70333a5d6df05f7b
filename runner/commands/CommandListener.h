#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "runner/NamedMembers.h"
#include "runner/ProgressLine.h"

namespace zu::runner {
class TextOutput;
}

namespace zu::runner::commands {

/// Hears what the engine tells while a command runs, and keeps it: a command says itself what went wrong. The
/// progress of long jobs is shown on `errors`.
class CommandListener final : public NamedMembers {
public:
    /// Jobs end when `interrupted` answers true. `working` tells other threads that a job is watched. With
    /// `trace` the engine's log is written to `errors` too.
    CommandListener(TextOutput& errors, const std::function<bool()>& interrupted, std::atomic<bool>& working,
                    bool trace);

    /// The error reported last, and the notes of the log, since the last Forget.
    const std::wstring& lastReport() const noexcept { return lastReport_; }
    const std::vector<std::wstring>& notes() const noexcept { return notes_; }
    /// Notes beyond those that are kept.
    std::size_t moreNotes() const noexcept { return moreNotes_; }
    void Forget();

private:
    void Keep(const std::wstring& note);

    ProgressLine progress_;
    std::wstring lastReport_;
    std::vector<std::wstring> notes_;
    std::size_t moreNotes_ = 0;
};

}  // namespace zu::runner::commands
