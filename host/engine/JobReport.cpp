#include "host/engine/JobReport.h"

#include <utility>

#include "host/engine/EngineState.h"
#include "portable/error/Error.h"

namespace zu::host {
namespace {

/// Milliseconds between two calls of the listener, also before the first.
constexpr std::uint64_t kPause = 200;

}  // namespace

JobReport::JobReport(std::wstring name, std::uint64_t total)
    : name_(std::move(name)), total_(total), nextCall_(GetTickCount64() + kPause) {}

JobReport::~JobReport() {
    if (told_) EngineState::Current().messages.EndProgress();
}

void JobReport::Report(std::uint64_t done, std::uint64_t total) {
    const std::uint64_t now = GetTickCount64();
    if (now < nextCall_) return;
    nextCall_ = now + kPause;
    told_ = true;
    if (!EngineState::Current().messages.Progress(name_, done, total))
        throw Error(ErrorKind::Cancelled, "The job was ended by the user.");
}

}  // namespace zu::host
