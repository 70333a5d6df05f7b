#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/engine/Settings.h"

namespace zu::host {

/// Receives what is wrong with a settings file, one text a fault.
using SettingsFaults = std::function<void(const std::wstring&)>;

/// The settings file that counts here: the one that the environment variable ZUENGINE_INI names, else
/// zuengine.ini beside the running program, else Zuengine\zuengine.ini in the user's application-data folder.
/// Empty when there is none. A file named by the variable counts even when it does not exist.
std::wstring FindSettingsFile();

/// Reads `text` in the form of an INI file: [Section], Key=Value, lines that begin with ; or # are comments,
/// a value may stand in double quotes. Relative paths start at `folder`, %NAME% stands for the environment
/// variable. Unknown keys and bad values are told to `faults` with their line and passed over.
void ParseSettings(std::wstring_view text, const std::wstring& folder, Settings& settings,
                   const SettingsFaults& faults);

/// The settings of `file` (UTF-8, UTF-16 with a mark, or the ANSI code page); defaults where it says nothing.
Settings ReadSettings(const std::wstring& file, const SettingsFaults& faults);

}  // namespace zu::host
