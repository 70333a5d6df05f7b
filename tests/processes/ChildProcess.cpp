#include "ChildProcess.h"

#include <array>
#include <stdexcept>

namespace zu::test {
namespace {

std::wstring Beside(std::wstring_view program) {
    std::wstring path(32'768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    path.resize(path.find_last_of(L'\\') + 1);
    return path.append(program);
}

}  // namespace

ChildProcess::ChildProcess(std::wstring_view program, const std::wstring& arguments) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE input = nullptr;
    if (!CreatePipe(&output_, &input, &inherited, 0)) throw std::runtime_error("no pipe");
    SetHandleInformation(output_, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = input;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started{};
    const std::wstring path = Beside(program);
    std::wstring line = L"\"" + path + L"\" " + arguments;
    const BOOL done = CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                     &startup, &started);
    CloseHandle(input);
    if (!done) {
        CloseHandle(output_);
        throw std::runtime_error("the program beside the test cannot be started");
    }
    CloseHandle(started.hThread);
    process_ = started.hProcess;
}

ChildProcess::~ChildProcess() {
    Kill();
    CloseHandle(process_);
    CloseHandle(output_);
}

std::optional<std::string> ChildProcess::ReadLine() {
    for (;;) {
        const auto end = rest_.find('\n');
        if (end != std::string::npos) {
            std::string line = rest_.substr(0, end);
            rest_.erase(0, end + 1);
            return line;
        }
        std::array<char, 4096> bytes{};
        DWORD count = 0;
        if (!ReadFile(output_, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) || count == 0)
            return std::nullopt;
        rest_.append(bytes.data(), count);
    }
}

void ChildProcess::Kill() {
    TerminateProcess(process_, 99);
    Wait();
}

DWORD ChildProcess::Wait() {
    WaitForSingleObject(process_, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process_, &code);
    return code;
}

}  // namespace zu::test
