#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "host/engine/Settings.h"

namespace zu::host {

/// The settings of this process: read from the settings file on first use, changed by clients for as long as
/// the process lives. Safe for several threads.
class SettingsStore {
public:
    static SettingsStore& Instance();

    Settings Get() const { return *Share(); }
    /// The settings as they are now; another object as soon as one of them is put.
    std::shared_ptr<const Settings> Share() const;
    /// Sets one setting; a new log file or level counts at once, a relative folder or file starts at the
    /// current folder. See ApplySetting.
    SettingResult Put(std::wstring_view name, std::wstring_view text, std::wstring* expected);

private:
    SettingsStore();

    mutable std::mutex mutex_;
    std::shared_ptr<const Settings> settings_;
};

}  // namespace zu::host
