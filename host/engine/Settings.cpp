#include "host/engine/Settings.h"

#include <windows.h>

#include <array>

#include "com/Bstr.h"
#include "com/SameText.h"
#include "portable/text/CodePage.h"

namespace zu::host {
namespace {

std::optional<bool> ParseSwitch(std::wstring_view text) {
    for (const auto word : {L"yes", L"on", L"true", L"1"})
        if (com::SameText(text, word)) return true;
    for (const auto word : {L"no", L"off", L"false", L"0"})
        if (com::SameText(text, word)) return false;
    return std::nullopt;
}

std::optional<unsigned> ParseNumber(std::wstring_view text, unsigned greatest) {
    if (text.empty() || text.size() > 9) return std::nullopt;
    unsigned number = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9') return std::nullopt;
        number = number * 10 + static_cast<unsigned>(digit - L'0');
    }
    if (number > greatest) return std::nullopt;
    return number;
}

std::wstring SwitchText(bool value) {
    return value ? L"yes" : L"no";
}

/// Puts a parsed value where it belongs; false when the text did not parse.
template <class Target, class Parsed>
bool Put(Target& target, const std::optional<Parsed>& parsed) {
    if (parsed) target = static_cast<Target>(*parsed);
    return parsed.has_value();
}

std::optional<Durability> ParseDurability(std::wstring_view text) {
    if (com::SameText(text, L"safe")) return Durability::Safe;
    if (com::SameText(text, L"fast")) return Durability::Fast;
    return std::nullopt;
}

std::optional<unsigned> ParseCodePage(std::wstring_view text) {
    const auto number = ParseNumber(text, 65535);
    if (!number || !text::CodePage::Find(*number)) return std::nullopt;
    return number;
}

bool PutName(std::wstring& target, std::wstring_view text) {
    if (text.empty() || text.find_first_of(L"|>") != std::wstring_view::npos) return false;
    target = text;
    return true;
}

std::optional<bool> ParseLocks(std::wstring_view text) {
    if (com::SameText(text, L"FoxPro")) return false;
    if (com::SameText(text, L"Clipper")) return true;
    return std::nullopt;
}

constexpr std::wstring_view kFormatByFields = L"auto";
constexpr std::array<std::wstring_view, 3> kTableFormats = {L"dBASE III", L"FoxPro 2", L"Visual FoxPro"};

std::optional<std::wstring> ParseTableFormat(std::wstring_view text) {
    if (com::SameText(text, kFormatByFields)) return std::wstring();
    for (const std::wstring_view format : kTableFormats)
        if (com::SameText(text, format)) return std::wstring(format);
    return std::nullopt;
}

struct Key {
    std::wstring_view name;
    bool (*put)(Settings&, std::wstring_view);
    std::wstring (*get)(const Settings&);
    std::wstring_view expected;
};

constexpr unsigned kMostDecimals = 15;
constexpr unsigned kLongestReuse = 60'000;
constexpr unsigned kLongestWait = 600'000;

const std::array<Key, 15> kKeys = {{
    {L"Data.Folder", [](Settings& s, std::wstring_view t) { return s.dataFolder = t, true; },
     [](const Settings& s) { return s.dataFolder; }, L"a folder"},
    {L"Data.DefaultTechnology",
     [](Settings& s, std::wstring_view t) { return PutName(s.defaultTechnology, t); },
     [](const Settings& s) { return s.defaultTechnology; }, L"the name of a technology, such as DBF"},
    {L"Data.CodePage", [](Settings& s, std::wstring_view t) { return Put(s.codePage, ParseCodePage(t)); },
     [](const Settings& s) { return std::to_wstring(s.codePage); }, L"the number of a known code page"},
    {L"Data.ShowDeleted", [](Settings& s, std::wstring_view t) { return Put(s.showDeleted, ParseSwitch(t)); },
     [](const Settings& s) { return SwitchText(s.showDeleted); }, L"yes or no"},
    {L"Data.BlankNumbersAreNull",
     [](Settings& s, std::wstring_view t) { return Put(s.blankNumbersAreNull, ParseSwitch(t)); },
     [](const Settings& s) { return SwitchText(s.blankNumbersAreNull); }, L"yes or no"},
    {L"Data.ReuseTables",
     [](Settings& s, std::wstring_view t) { return Put(s.reuseTables, ParseNumber(t, kLongestReuse)); },
     [](const Settings& s) { return std::to_wstring(s.reuseTables); }, L"milliseconds from 0 to 60000"},
    {L"Data.Durability",
     [](Settings& s, std::wstring_view t) { return Put(s.durability, ParseDurability(t)); },
     [](const Settings& s) { return std::wstring(s.durability == Durability::Safe ? L"safe" : L"fast"); },
     L"safe or fast"},
    {L"Data.LockWait",
     [](Settings& s, std::wstring_view t) { return Put(s.lockWait, ParseNumber(t, kLongestWait)); },
     [](const Settings& s) { return std::to_wstring(s.lockWait); }, L"milliseconds from 0 to 600000"},
    {L"Data.Locks", [](Settings& s, std::wstring_view t) { return Put(s.clipperLocks, ParseLocks(t)); },
     [](const Settings& s) { return std::wstring(s.clipperLocks ? L"Clipper" : L"FoxPro"); },
     L"FoxPro or Clipper"},
    {L"Data.AllowStaleIndexes",
     [](Settings& s, std::wstring_view t) { return Put(s.allowStaleIndexes, ParseSwitch(t)); },
     [](const Settings& s) { return SwitchText(s.allowStaleIndexes); }, L"yes or no"},
    {L"Data.NewTableFormat",
     [](Settings& s, std::wstring_view t) { return Put(s.newTableFormat, ParseTableFormat(t)); },
     [](const Settings& s) {
         return s.newTableFormat.empty() ? std::wstring(kFormatByFields) : s.newTableFormat;
     },
     L"auto, dBASE III, FoxPro 2 or Visual FoxPro"},
    {L"Numbers.SingleDecimals",
     [](Settings& s, std::wstring_view t) { return Put(s.singleDecimals, ParseNumber(t, kMostDecimals)); },
     [](const Settings& s) { return std::to_wstring(s.singleDecimals); }, L"a number from 0 to 15"},
    {L"Numbers.DoubleDecimals",
     [](Settings& s, std::wstring_view t) { return Put(s.doubleDecimals, ParseNumber(t, kMostDecimals)); },
     [](const Settings& s) { return std::to_wstring(s.doubleDecimals); }, L"a number from 0 to 15"},
    {L"Log.File", [](Settings& s, std::wstring_view t) { return s.logFile = t, true; },
     [](const Settings& s) { return s.logFile; }, L"a file"},
    {L"Log.Level", [](Settings& s, std::wstring_view t) { return Put(s.logLevel, ParseLogLevel(t)); },
     [](const Settings& s) { return std::wstring(LogLevelName(s.logLevel)); },
     L"off, error, warning, info or debug"},
}};

const Key* FindKey(std::wstring_view name) noexcept {
    for (const Key& key : kKeys)
        if (com::SameText(key.name, name)) return &key;
    return nullptr;
}

}  // namespace

std::vector<std::wstring_view> SettingNames() {
    std::vector<std::wstring_view> names;
    names.reserve(kKeys.size());
    for (const Key& key : kKeys)
        names.push_back(key.name);
    return names;
}

std::optional<std::wstring> SettingText(const Settings& settings, std::wstring_view name) {
    const Key* const key = FindKey(name);
    if (!key) return std::nullopt;
    return key->get(settings);
}

SettingResult ApplySetting(Settings& settings, std::wstring_view name, std::wstring_view text,
                           std::wstring* expected) {
    const Key* const key = FindKey(name);
    if (!key) return SettingResult::UnknownName;
    if (key->put(settings, text)) return SettingResult::Done;
    if (expected) *expected = key->expected;
    return SettingResult::BadValue;
}

}  // namespace zu::host
