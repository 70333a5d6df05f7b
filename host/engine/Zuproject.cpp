#include "host/engine/Zuproject.h"

#include <string>
#include <string_view>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/Variant.h"
#include "host/engine/EngineState.h"
#include "host/engine/Reporting.h"
#include "host/engine/SettingsStore.h"
#include "host/service/DatabaseService.h"

namespace zu::host {
namespace {

constexpr std::wstring_view kDataFolder = L"Data.Folder";

std::wstring EngineVersion() {
    constexpr std::string_view kVersion = ZU_VERSION;
    return {kVersion.begin(), kVersion.end()};
}

void PutSetting(std::wstring_view name, std::wstring_view text) {
    std::wstring expected;
    switch (SettingsStore::Instance().Put(name, text, &expected)) {
        case SettingResult::Done:
            return;
        case SettingResult::UnknownName:
            throw com::ComError(E_INVALIDARG, L"There is no setting \"" + std::wstring(name) + L"\"");
        case SettingResult::BadValue:
            throw com::ComError(E_INVALIDARG, L"Setting " + std::wstring(name) + L" cannot be \"" +
                                                  std::wstring(text) + L"\", expected " + expected);
    }
}

std::wstring SettingOf(std::wstring_view name) {
    const auto text = SettingText(SettingsStore::Instance().Get(), name);
    if (!text) throw com::ComError(E_INVALIDARG, L"There is no setting \"" + std::wstring(name) + L"\"");
    return *text;
}

}  // namespace

HRESULT Zuproject::Engine(IDispatch** Result) noexcept {
    return GuardedResult(Result, [&]() -> IDispatch* { return com::Share<ZuProject>(this).detach(); });
}

HRESULT Zuproject::get_Name(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(L"Zuengine"); });
}

HRESULT Zuproject::get_Version(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(EngineVersion()); });
}

HRESULT Zuproject::get_SettingsFile(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(SettingsStore::Instance().Get().file); });
}

HRESULT Zuproject::get_Setting(BSTR Name, BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(SettingOf(com::View(Name))); });
}

HRESULT Zuproject::put_Setting(BSTR Name, BSTR Value) noexcept {
    return Guarded([&] { PutSetting(com::View(Name), com::View(Value)); });
}

HRESULT Zuproject::get_DataFolder(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(SettingOf(kDataFolder)); });
}

HRESULT Zuproject::put_DataFolder(BSTR Value) noexcept {
    return Guarded([&] { PutSetting(kDataFolder, com::View(Value)); });
}

HRESULT Zuproject::get_LogFile(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(SettingsStore::Instance().Get().logFile); });
}

HRESULT Zuproject::DatabaseService(IDispatch** Result) noexcept {
    return GuardedResult(Result, [&] { return com::MakeObject<host::DatabaseService>().detach(); });
}

HRESULT Zuproject::OwnerWindow(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return EngineState::Current().ownerWindow; });
}

HRESULT Zuproject::SetOwnerWindow(LONG Window) noexcept {
    return Guarded([&] { EngineState::Current().ownerWindow = Window; });
}

HRESULT Zuproject::get_Interactive(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(EngineState::Current().interactive); });
}

HRESULT Zuproject::put_Interactive(VARIANT_BOOL Value) noexcept {
    return Guarded([&] { EngineState::Current().interactive = Value != VARIANT_FALSE; });
}

}  // namespace zu::host
