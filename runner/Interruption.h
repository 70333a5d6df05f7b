#pragma once

#include <windows.h>

#include <atomic>
#include <functional>

#include "runner/WinHandle.h"

namespace zu::runner {

/// Ends the program on Ctrl+C (exit code 130): politely when the script engine can be stopped, otherwise at
/// once. One object at a time.
class Interruption {
public:
    /// `stop` is called on the system's own thread and answers whether the script is going to end by itself.
    explicit Interruption(std::function<bool()> stop);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    bool raised() const noexcept { return raised_; }
    /// Waits, serving the apartment's messages; false when the wait was interrupted.
    bool Sleep(DWORD milliseconds) const;

private:
    static BOOL WINAPI Handle(DWORD event) noexcept;
    void EndProcess() noexcept;

    std::function<bool()> stop_;
    std::atomic<bool> raised_ = false;
    WinHandle raisedEvent_;
    WinHandle finishedEvent_;
};

}  // namespace zu::runner
