// The half of the engine object that watches the component's jobs.
#include "host/engine/EngineState.h"
#include "host/engine/Zuproject.h"
#include "portable/error/Error.h"

namespace zu::host {

HRESULT Zuproject::BeginJob(const wchar_t* name, LONG total) noexcept {
    return com::Guard([&] {
        const std::uint64_t records = total > 0 ? static_cast<std::uint64_t>(total) : 0;
        EngineState::Current().jobs.push_back(std::make_unique<JobReport>(name ? name : L"", records));
    });
}

HRESULT Zuproject::ReportJob(LONG done) noexcept {
    auto& jobs = EngineState::Current().jobs;
    if (jobs.empty()) return S_OK;
    try {
        jobs.back()->Report(done > 0 ? static_cast<std::uint64_t>(done) : 0);
        return S_OK;
    } catch (const Error&) {
        return E_ABORT;
    } catch (...) {
        return S_OK;  // who cannot be told does not end the job
    }
}

HRESULT Zuproject::EndJob() noexcept {
    auto& jobs = EngineState::Current().jobs;
    if (jobs.empty()) return S_FALSE;
    jobs.pop_back();
    return S_OK;
}

}  // namespace zu::host
