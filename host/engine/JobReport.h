#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "host/technologies/Maintenance.h"

namespace zu::host {

/// One long job on its way to the listener of the thread's messages: a few times a second the listener's
/// method Progress(Job, Done, Total) is called, and ProgressEnd() when the job is over. Both are optional.
/// When Progress answers False the job ends.
///
/// Short jobs are over before the first call, so that they say nothing.
class JobReport final : public technologies::Progress {
public:
    /// `total` 0: not known.
    explicit JobReport(std::wstring name, std::uint64_t total = 0);
    JobReport(const JobReport&) = delete;
    JobReport& operator=(const JobReport&) = delete;
    ~JobReport() override;

    /// Throws an Error of kind Cancelled when the listener wants the job to end.
    void Report(std::uint64_t done, std::uint64_t total) override;
    void Report(std::uint64_t done) { Report(done, total_); }

private:
    std::wstring name_;
    std::uint64_t total_;
    std::uint64_t nextCall_;  ///< milliseconds of the system's clock
    bool told_ = false;
};

}  // namespace zu::host
