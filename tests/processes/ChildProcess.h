#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace zu::test {

/// A program of this test, found beside it, whose lines are read. Ended with this object if it still runs.
class ChildProcess {
public:
    /// Throws std::runtime_error when it cannot be started.
    ChildProcess(std::wstring_view program, const std::wstring& arguments);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Waits for the next whole line; nothing when the program has ended.
    std::optional<std::string> ReadLine();
    /// Ends the program at once, wherever it is.
    void Kill();
    /// Waits for the end and answers the exit code.
    DWORD Wait();

private:
    HANDLE process_ = nullptr;
    HANDLE output_ = nullptr;
    std::string rest_;
};

}  // namespace zu::test
