#pragma once

#include <windows.h>

#include <activscp.h>

#include <atomic>
#include <functional>
#include <optional>
#include <string>

#include "com/ComError.h"
#include "com/ComPtr.h"
#include "runner/ErrorReport.h"
#include "runner/Language.h"
#include "runner/ScriptSite.h"

namespace zu::runner {

class ScriptSource;

/// Runs one script in its language's engine on the calling thread (a single-threaded apartment).
class ScriptHost {
public:
    using Report = std::function<void(const ScriptError&)>;

    /// Throws com::ComError when the system has no engine for the language.
    ScriptHost(Language language, Report report);
    ~ScriptHost();
    ScriptHost(const ScriptHost&) = delete;
    ScriptHost& operator=(const ScriptHost&) = delete;

    /// Gives the script an object under a name; with `global` its members can be used without the name too.
    void Add(const std::wstring& name, com::ComPtr<IDispatch> object, bool global);

    /// Runs the script's top-level code. Errors go to the report; `failed` tells afterwards.
    void Run(const ScriptSource& source);
    /// An error was reported in this run.
    bool failed() const noexcept { return failed_; }
    /// The error reported last, for callers of routines that get no more than a failure code.
    const std::optional<ScriptError>& lastError() const noexcept { return lastError_; }

    /// The object whose methods are the script's routines; null before the script runs and after Close.
    com::ComPtr<IDispatch> routines() const;

    /// Asks the engine to leave the script's code; false when the engine cannot. May be called on any thread.
    bool Stop() noexcept;
    bool stopped() const noexcept { return stopped_; }

    /// Ends the engine and lets all objects go. Called once more it does nothing.
    void Close() noexcept;

private:
    void ReportError(ScriptError error);

    Report report_;
    com::ComPtr<ScriptSite> site_;
    com::ComPtr<IActiveScript> engine_;
    com::ComPtr<IActiveScriptParse> parser_;
    std::optional<ScriptError> lastError_;
    bool parsing_ = false;
    bool failed_ = false;
    std::atomic<bool> stopped_ = false;
};

}  // namespace zu::runner
