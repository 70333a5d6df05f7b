#pragma once

#include <windows.h>

#include <string>

#include "com/ComError.h"
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
    /// What is told of a job that the user has ended.
    static std::wstring EndedByUser(LONG done);
    /// The same for jobs that end by an error: throws ComError.
    void Reached(LONG done) const {
        if (!GoesOnAfter(done)) throw com::ComError(E_ABORT, EndedByUser(done));
    }
    /// As Reached, for records that take microseconds each: one in many is told.
    void Passed(LONG done) const {
        constexpr LONG kInterval = 64;
        if (done % kInterval == 0) Reached(done);
    }

private:
    com::ComPtr<JobReports> reports_;
};

}  // namespace zu::component
