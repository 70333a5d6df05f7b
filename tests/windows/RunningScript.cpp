#include "tests/windows/RunningScript.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <utility>

namespace zu::windows {

namespace {

constexpr std::chrono::seconds kLimit{20};
constexpr DWORD kPoll = 5;  // milliseconds between two looks

std::wstring OwnFolder() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

std::string Narrow(const std::wstring& text) {
    return std::string(text.begin(), text.end());  // paths of tests are ASCII
}

template <class Stop>
bool Poll(const std::function<bool()>& condition, std::chrono::milliseconds limit, Stop&& stopped) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end || stopped()) return condition();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kPoll, QS_ALLINPUT);
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
    return true;
}

}  // namespace

bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    return Poll(condition, limit, [] { return false; });
}

RunningScript::RunningScript(const std::wstring& folder, const std::string& script, Host host)
    : output_(folder + L"output.txt") {
    const std::wstring path = folder + L"script.vbs";
    std::ofstream(Narrow(path), std::ios::binary) << script;
    const std::wstring program =
        host == Host::kZurun ? L"\"" + OwnFolder() + L"zurun.exe\"" : L"cscript.exe //nologo";
    Start(program + L" \"" + path + L"\" \"" + folder.substr(0, folder.size() - 1) + L"\"", nullptr);
}

RunningScript::RunningScript(const std::wstring& folder, const std::vector<std::wstring>& words)
    : output_(folder + L"output.txt") {
    std::wstring command = L"\"" + OwnFolder() + L"zurun.exe\"";
    for (const std::wstring& word : words)
        command += L" \"" + word + L"\"";
    Start(std::move(command), folder.c_str());
}

void RunningScript::Start(std::wstring command, const wchar_t* folder) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE output =
        CreateFileW(output_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output;
    const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                        nullptr, folder, &start, &information_);
    CloseHandle(output);
    EXPECT_TRUE(started);
}

RunningScript::~RunningScript() {
    if (isRunning()) TerminateProcess(information_.hProcess, 1);
    WaitForSingleObject(information_.hProcess, 5000);
    CloseHandle(information_.hProcess);
    CloseHandle(information_.hThread);
}

bool RunningScript::isRunning() const {
    return WaitForSingleObject(information_.hProcess, 0) == WAIT_TIMEOUT;
}

bool RunningScript::WaitFor(const std::function<bool()>& condition) const {
    return Poll(condition, kLimit, [this] { return !isRunning(); });
}

DWORD RunningScript::ExitCode() const {
    DWORD code = 0;
    GetExitCodeProcess(information_.hProcess, &code);
    return code;
}

std::string RunningScript::Output() {
    EXPECT_TRUE(WaitUntil([this] { return !isRunning(); })) << "the script does not end";
    std::ifstream file(Narrow(output_), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    std::erase(text, '\r');
    return text;
}

}  // namespace zu::windows
