#include "host/engine/SettingsStore.h"

#include <windows.h>

#include <utility>
#include <vector>

#include "host/engine/Log.h"
#include "host/engine/SettingsFile.h"

namespace zu::host {
namespace {

std::wstring FullPath(const std::wstring& path) {
    if (path.empty()) return path;
    const DWORD length = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(length, L'\0');
    full.resize(length ? GetFullPathNameW(path.c_str(), length, full.data(), nullptr) : 0);
    return full.empty() ? path : full;
}

void OpenLog(const Settings& settings) {
    if (!Log::Instance().Open(settings.logFile, settings.logLevel)) {
        // There is no log to say it in; a debugger can be asked.
        OutputDebugStringW((L"Zuengine: cannot write the log file " + settings.logFile + L"\n").c_str());
    }
}

}  // namespace

SettingsStore& SettingsStore::Instance() {
    // Never destroyed: threads may still ask while the process ends.
    static auto* const store = new SettingsStore;
    return *store;
}

SettingsStore::SettingsStore() {
    std::vector<std::wstring> faults;
    settings_ = std::make_shared<const Settings>(
        ReadSettings(FindSettingsFile(), [&faults](const std::wstring& text) { faults.push_back(text); }));
    OpenLog(*settings_);
    for (const std::wstring& fault : faults)
        Log::Instance().Write(LogLevel::Warning, fault);
}

std::shared_ptr<const Settings> SettingsStore::Share() const {
    const std::lock_guard lock(mutex_);
    return settings_;
}

SettingResult SettingsStore::Put(std::wstring_view name, std::wstring_view text, std::wstring* expected) {
    const std::lock_guard lock(mutex_);
    Settings changed = *settings_;
    const SettingResult result = ApplySetting(changed, name, text, expected);
    if (result != SettingResult::Done) return result;
    changed.dataFolder = FullPath(changed.dataFolder);
    changed.logFile = FullPath(changed.logFile);
    const bool newLog = changed.logFile != settings_->logFile || changed.logLevel != settings_->logLevel;
    settings_ = std::make_shared<const Settings>(std::move(changed));
    if (newLog) OpenLog(*settings_);
    return result;
}

}  // namespace zu::host
