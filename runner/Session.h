#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "runner/Console.h"
#include "runner/EngineLink.h"
#include "runner/EventBindings.h"
#include "runner/GlobalFunctions.h"
#include "runner/Interruption.h"
#include "runner/ScriptHost.h"
#include "runner/ScriptRoutines.h"
#include "runner/ScriptSource.h"

namespace zu::runner {

/// One run of one script: its host, the objects it is given, and how it ends.
class Session : private GlobalFunctions::CallWatch {
public:
    Session(ScriptSource source, const std::vector<std::wstring>& arguments, Console& console,
            EngineLink& engine);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Gives the script one more object (see ScriptHost::Add). Before Run.
    void Add(const std::wstring& name, com::ComPtr<IDispatch> object, bool global);

    /// Runs the script and answers the program's exit code. `trace` shows the engine's log.
    int Run(bool trace);

    const ScriptSource& source() const noexcept { return source_; }
    Console& console() noexcept { return console_; }
    EngineLink& engine() noexcept { return engine_; }
    EventBindings& events() noexcept { return events_; }
    com::ComPtr<IDispatch> arguments() const noexcept { return arguments_; }
    com::ComPtr<IDispatch> functions() { return functions_->Functions(); }
    com::ComPtr<IDispatch> routines() const noexcept { return com::ComPtr<IDispatch>(routines_.get()); }

    /// Ends the script with this exit code: nothing after the call runs.
    [[noreturn]] void Quit(int code);
    /// Waits; an interruption ends the script.
    void Sleep(DWORD milliseconds);

private:
    void OnCall() noexcept override { ++calls_; }
    void OnReturn() override;
    /// Leaves the script: by an error of the call that it is in, or with the whole process.
    [[noreturn]] void Leave(int code);
    void Report(const ScriptError& error);
    void LetGo() noexcept;

    ScriptSource source_;
    Console& console_;
    EngineLink& engine_;
    int exitCode_ = 0;
    bool untold_ = false;  ///< an error could not be reported
    ScriptHost host_;
    EventBindings events_;
    com::ComPtr<IDispatch> arguments_;
    com::ComPtr<ScriptRoutines> routines_;
    com::ComPtr<GlobalFunctions> functions_;
    std::atomic<int> calls_ = 0;         ///< of functions that have not returned
    std::atomic<bool> working_ = false;  ///< the engine is in a job that an interruption ends
    Interruption interruption_;          // last: its thread uses the host
};

}  // namespace zu::runner
