#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace zu::windows {

/// A script host that runs a script in a process of its own, and the folder that both live in. The process is
/// ended with the object at the latest.
class RunningScript {
public:
    enum class Host { kZurun, kCscript };

    /// Starts the script (VBScript). Its first argument is `folder`.
    RunningScript(const std::wstring& folder, const std::string& script, Host host = Host::kZurun);
    /// Starts zurun with these words, in `folder`.
    RunningScript(const std::wstring& folder, const std::vector<std::wstring>& words);
    ~RunningScript();
    RunningScript(const RunningScript&) = delete;
    RunningScript& operator=(const RunningScript&) = delete;

    bool isRunning() const;
    /// What the script wrote, once it has ended; fails the test when it does not end in time.
    std::string Output();
    /// Once it has ended.
    DWORD ExitCode() const;
    DWORD process() const noexcept { return information_.dwProcessId; }

    /// Waits until `condition` holds; false after a generous limit, or when the process has ended first.
    bool WaitFor(const std::function<bool()>& condition) const;

private:
    void Start(std::wstring command, const wchar_t* folder);

    std::wstring output_;
    PROCESS_INFORMATION information_{};
};

/// Waits until `condition` holds; false after a generous limit.
bool WaitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::seconds(20));

}  // namespace zu::windows
