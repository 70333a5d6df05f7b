#pragma once

#include <windows.h>

#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace zu::host {

/// How much is written: a line is kept when its level is not above the log's.
enum class LogLevel { Off, Error, Warning, Info, Debug };

/// "off", "error", "warning", "info" or "debug" in any case; nothing for another text.
std::optional<LogLevel> ParseLogLevel(std::wstring_view text) noexcept;
std::wstring_view LogLevelName(LogLevel level) noexcept;

/// The engine's log: one file for the process, written line by line so that several threads and processes
/// can share it. Without a file nothing is written. Never throws: a log must not turn a success into a
/// failure.
///
/// A line reads `2026-11-21 07:43:14.123 4711 error text` (local time, thread, level), UTF-8, ended by CR LF.
class Log {
public:
    /// The log of this process.
    static Log& Instance() noexcept;

    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    ~Log();

    /// Sets the file (empty: none) and the level. A file that cannot be opened leaves the log without one;
    /// answers false then.
    bool Open(const std::wstring& file, LogLevel level) noexcept;
    void Write(LogLevel level, std::wstring_view text) noexcept;
    bool Takes(LogLevel level) const noexcept;

    LogLevel level() const noexcept { return level_; }

private:
    mutable std::mutex mutex_;
    HANDLE file_ = INVALID_HANDLE_VALUE;
    LogLevel level_ = LogLevel::Info;
};

}  // namespace zu::host
