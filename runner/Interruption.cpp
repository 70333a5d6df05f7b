#include "runner/Interruption.h"

#include <objbase.h>

#include <mutex>
#include <utility>

#include "runner/ExitCodes.h"

namespace zu::runner {
namespace {

// Time for an orderly end: long when the engine has agreed to stop, short when it cannot.
constexpr DWORD kPatience = 3000;
constexpr DWORD kImpatience = 500;

// Guards `current` and the decision of the object it names to be raised or to go.
std::mutex guard;
Interruption* current = nullptr;

}  // namespace

Interruption::Interruption(std::function<bool()> stop)
    : stop_(std::move(stop)),
      raisedEvent_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      finishedEvent_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    const std::lock_guard lock(guard);
    current = this;
    SetConsoleCtrlHandler(&Interruption::Handle, TRUE);
}

Interruption::~Interruption() {
    {
        const std::lock_guard lock(guard);
        current = nullptr;
        if (!raised_) {
            SetConsoleCtrlHandler(&Interruption::Handle, FALSE);
            return;
        }
    }
    // The system's thread still uses this object, and waits only to be told before it ends the process.
    SetEvent(finishedEvent_.get());
    ::Sleep(kPatience);
}

BOOL Interruption::Handle(DWORD) noexcept {
    Interruption* interruption = nullptr;
    {
        const std::lock_guard lock(guard);
        interruption = current;
        if (!interruption) return FALSE;
        interruption->raised_ = true;
    }
    interruption->EndProcess();
    return TRUE;
}

void Interruption::EndProcess() noexcept {
    SetEvent(raisedEvent_.get());
    bool stopping = false;
    try {
        stopping = stop_();
    } catch (...) {
        stopping = false;
    }
    WaitForSingleObject(finishedEvent_.get(), stopping ? kPatience : kImpatience);
    // Ending the process in the usual way waits for the busy script thread and may never come to an end.
    TerminateProcess(GetCurrentProcess(), kExitInterrupted);
}

bool Interruption::Sleep(DWORD milliseconds) const {
    HANDLE events[] = {raisedEvent_.get()};
    DWORD index = 0;
    CoWaitForMultipleHandles(0, milliseconds, 1, events, &index);
    return !raised_;
}

}  // namespace zu::runner
