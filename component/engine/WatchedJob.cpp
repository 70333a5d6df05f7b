#include "component/engine/WatchedJob.h"

#include "component/engine/EngineLink.h"

namespace zu::component {

WatchedJob::WatchedJob(const wchar_t* name, LONG total) noexcept {
    auto reports = Engine().jobReports();
    if (reports && SUCCEEDED(reports->BeginJob(name, total))) reports_ = std::move(reports);
}

WatchedJob::~WatchedJob() {
    if (reports_) reports_->EndJob();
}

}  // namespace zu::component
