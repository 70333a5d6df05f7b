#include "component/engine/WatchedJob.h"

#include "component/engine/EngineLink.h"

namespace zu::component {

WatchedJob::WatchedJob(const wchar_t* name, LONG total) noexcept {
    auto reports = Engine().jobReports();
    if (reports && SUCCEEDED(reports->BeginJob(name, total))) reports_ = std::move(reports);
}

std::wstring WatchedJob::EndedByUser(LONG done) {
    return L"The job was ended by the user after " + std::to_wstring(done) +
           L" records; what was done until then stays";
}

WatchedJob::~WatchedJob() {
    if (reports_) reports_->EndJob();
}

}  // namespace zu::component
