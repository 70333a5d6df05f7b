#include "host/engine/Log.h"

#include <array>
#include <cstdio>
#include <utility>

#include "com/Bstr.h"
#include "com/SameText.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

constexpr std::array<std::pair<std::wstring_view, LogLevel>, 5> kLevels = {{
    {L"off", LogLevel::Off},
    {L"error", LogLevel::Error},
    {L"warning", LogLevel::Warning},
    {L"info", LogLevel::Info},
    {L"debug", LogLevel::Debug},
}};

std::string LineOf(LogLevel level, std::wstring_view text) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    std::array<char, 64> stamp{};
    std::snprintf(stamp.data(), stamp.size(), "%04u-%02u-%02u %02u:%02u:%02u.%03u %lu ", now.wYear,
                  now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds,
                  GetCurrentThreadId());
    std::string line = stamp.data();
    line += text::ToUtf8(com::AsUtf16(LogLevelName(level)));
    line += ' ';
    const std::size_t content = line.size();
    line += text::ToUtf8(com::AsUtf16(text));
    // One report is one line, whatever the text holds.
    for (std::size_t i = content; i < line.size(); ++i)
        if (line[i] == '\r' || line[i] == '\n') line[i] = ' ';
    line += "\r\n";
    return line;
}

}  // namespace

std::optional<LogLevel> ParseLogLevel(std::wstring_view text) noexcept {
    for (const auto& [name, level] : kLevels)
        if (com::SameText(text, name)) return level;
    return std::nullopt;
}

std::wstring_view LogLevelName(LogLevel level) noexcept {
    return kLevels[static_cast<std::size_t>(level)].first;
}

Log& Log::Instance() noexcept {
    static Log log;
    return log;
}

Log::~Log() {
    // Without the lock: at the end of a process the thread that held it may have been stopped.
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(file_, INVALID_HANDLE_VALUE));
}

bool Log::Open(const std::wstring& file, LogLevel level) noexcept {
    const std::lock_guard lock(mutex_);
    level_ = level;
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(file_, INVALID_HANDLE_VALUE));
    if (file.empty()) return true;
    // Append access makes each write land at the end, also when other processes write to the same file.
    file_ =
        CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file_ != INVALID_HANDLE_VALUE;
}

bool Log::Takes(LogLevel level) const noexcept {
    const std::lock_guard lock(mutex_);
    return file_ != INVALID_HANDLE_VALUE && level != LogLevel::Off && level <= level_;
}

void Log::Write(LogLevel level, std::wstring_view text) noexcept {
    if (!Takes(level)) return;
    try {
        const std::string line = LineOf(level, text);
        const std::lock_guard lock(mutex_);
        if (file_ == INVALID_HANDLE_VALUE) return;
        DWORD written = 0;
        WriteFile(file_, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    } catch (...) {  // NOLINT(bugprone-empty-catch): no memory for a log line is no reason to fail
    }
}

}  // namespace zu::host
