#pragma once

#include <cstdint>

#include "host/technologies/Maintenance.h"

namespace zu::technologies {

/// Counts the steps of a long job and tells its listener every so often, so that a step costs next to
/// nothing.
class ProgressMeter {
public:
    /// `progress` may be null; `total` 0: not known.
    ProgressMeter(Progress* progress, std::uint64_t total) noexcept : progress_(progress), total_(total) {}

    /// One more step is done. Whatever the listener throws comes through.
    void Step() {
        if (++done_ % kInterval == 0) Tell();
    }
    /// Tells the listener at once. Before the first lasting write of a job it gives a last chance to stop.
    void Tell() {
        if (progress_ != nullptr) progress_->Report(done_, total_);
    }

private:
    static constexpr std::uint64_t kInterval = 1024;

    Progress* progress_;
    std::uint64_t total_;
    std::uint64_t done_ = 0;
};

}  // namespace zu::technologies
