#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/engine/Log.h"

namespace zu::host {

/// What confirmed changes survive: also a power cut, or the end of the process only.
enum class Durability { Safe, Fast };

/// What can be set for the engine. One object for the process; see docs/settings.md.
struct Settings {
    std::wstring file;        ///< where the settings came from; empty: defaults
    std::wstring dataFolder;  ///< absolute; empty: the current folder of the process
    std::wstring defaultTechnology = L"DBF";
    unsigned codePage = 1252;  ///< of tables without a mark
    bool showDeleted = false;
    bool blankNumbersAreNull = false;
    unsigned reuseTables = 1000;  ///< milliseconds that idle tables stay open; 0: closed at once
    int singleDecimals = 2;       ///< decimal places shown for type 4
    int doubleDecimals = 2;       ///< decimal places shown for type 5
    std::wstring logFile;
    LogLevel logLevel = LogLevel::Info;
    Durability durability = Durability::Fast;
    unsigned lockWait = 5000;        ///< milliseconds that a lock of another process is waited for
    bool clipperLocks = false;       ///< locks as Clipper programs take them; false: as FoxPro does
    bool allowStaleIndexes = false;  ///< write also when an index cannot be kept up to date
    std::wstring newTableFormat;     ///< of tables that are made; empty: what their fields need
};

/// The names of all settings, "Section.Key".
std::vector<std::wstring_view> SettingNames();

/// The value of the setting `name` ("Section.Key" in any case) as text; nothing for an unknown name.
std::optional<std::wstring> SettingText(const Settings& settings, std::wstring_view name);

enum class SettingResult { Done, UnknownName, BadValue };

/// Sets `name` to what `text` says. On BadValue nothing changes and `expected`, when given, tells what is
/// allowed.
SettingResult ApplySetting(Settings& settings, std::wstring_view name, std::wstring_view text,
                           std::wstring* expected = nullptr);

}  // namespace zu::host
