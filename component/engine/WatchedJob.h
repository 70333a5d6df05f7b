#pragma once

#include <windows.h>

#include "com/ComPtr.h"
#include "idl/JobReports.h"

namespace zu::component {

/// A walk over many records, watched by an engine that can. It ends with the object.
class WatchedJob {
public:
    /// `name` is what people call the job, `total` the number of its records.
    WatchedJob(const wchar_t* name, LONG total) noexcept;
    WatchedJob(const WatchedJob&) = delete;
    WatchedJob& operator=(const WatchedJob&) = delete;
    ~WatchedJob();

    /// False when the user wants the job to end, after so many records.
    bool GoesOnAfter(LONG done) const noexcept { return !reports_ || reports_->ReportJob(done) != E_ABORT; }

private:
    com::ComPtr<JobReports> reports_;
};

}  // namespace zu::component
