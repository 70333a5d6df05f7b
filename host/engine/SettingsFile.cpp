#include "host/engine/SettingsFile.h"

#include <windows.h>

#include <array>
#include <memory>
#include <vector>

#include "com/Bstr.h"
#include "host/engine/TextFile.h"

namespace zu::host {
namespace {

constexpr std::wstring_view kFileName = L"zuengine.ini";

std::wstring Environment(const wchar_t* name) {
    const DWORD length = GetEnvironmentVariableW(name, nullptr, 0);
    if (length == 0) return {};
    std::wstring value(length, L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), length));
    return value;
}

bool IsFile(const std::wstring& path) noexcept {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::wstring FolderOf(std::wstring path) {
    const auto slash = path.find_last_of(L"\\/");
    path.resize(slash == std::wstring::npos ? 0 : slash);
    return path;
}

std::wstring ProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return FolderOf(path);
        }
        path.resize(path.size() * 2);
    }
}

std::wstring_view Trimmed(std::wstring_view text) {
    constexpr std::wstring_view kBlanks = L" \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::wstring_view Unquoted(std::wstring_view text) {
    if (text.size() >= 2 && text.front() == L'"' && text.back() == L'"')
        return text.substr(1, text.size() - 2);
    return text;
}

std::wstring Expanded(std::wstring_view text) {
    std::wstring source(text);
    const DWORD length = ExpandEnvironmentStringsW(source.c_str(), nullptr, 0);
    if (length == 0) return source;
    std::wstring result(length, L'\0');
    const DWORD used = ExpandEnvironmentStringsW(source.c_str(), result.data(), length);
    result.resize(used ? used - 1 : 0);
    return result;
}

std::wstring Absolute(std::wstring_view path, const std::wstring& folder) {
    std::wstring full = Expanded(path);
    if (full.empty()) return full;
    const bool absolute =
        full.front() == L'\\' || full.front() == L'/' || (full.size() > 1 && full[1] == L':');
    return absolute || folder.empty() ? full : folder + L'\\' + full;
}

class Reader {
public:
    Reader(const std::wstring& folder, Settings& settings, const SettingsFaults& faults)
        : folder_(folder), settings_(settings), faults_(faults) {}

    void Line(std::wstring_view text) {
        ++line_;
        text = Trimmed(text);
        if (text.empty() || text.front() == L';' || text.front() == L'#') return;
        if (text.front() == L'[' && text.back() == L']') {
            section_ = Trimmed(text.substr(1, text.size() - 2));
            return;
        }
        const auto equals = text.find(L'=');
        if (equals == std::wstring_view::npos) return Fault(L"expected Key=Value or [Section]");
        Assign(section_ + L'.' + std::wstring(Trimmed(text.substr(0, equals))),
               Unquoted(Trimmed(text.substr(equals + 1))));
    }

private:
    void Assign(const std::wstring& name, std::wstring_view value) {
        const bool isPath = name.size() > 4 && (name.ends_with(L"File") || name.ends_with(L"Folder"));
        std::wstring expected;
        switch (ApplySetting(settings_, name, isPath ? Absolute(value, folder_) : std::wstring(value),
                             &expected)) {
            case SettingResult::Done:
                return;
            case SettingResult::UnknownName:
                return Fault(L"there is no setting " + name);
            case SettingResult::BadValue:
                return Fault(name + L" cannot be \"" + std::wstring(value) + L"\", expected " + expected);
        }
    }

    void Fault(const std::wstring& text) {
        if (faults_) faults_(L"settings, line " + std::to_wstring(line_) + L": " + text);
    }

    const std::wstring& folder_;
    Settings& settings_;
    const SettingsFaults& faults_;
    std::wstring section_;
    int line_ = 0;
};

}  // namespace

std::wstring FindSettingsFile() {
    if (std::wstring named = Environment(L"ZUENGINE_INI"); !named.empty()) return named;
    std::wstring beside = ProgramFolder() + L'\\';
    beside += kFileName;
    if (IsFile(beside)) return beside;
    if (std::wstring user = Environment(L"APPDATA"); !user.empty()) {
        user += L"\\Zuengine\\";
        user += kFileName;
        if (IsFile(user)) return user;
    }
    return {};
}

void ParseSettings(std::wstring_view text, const std::wstring& folder, Settings& settings,
                   const SettingsFaults& faults) {
    Reader reader(folder, settings, faults);
    while (!text.empty()) {
        const auto end = text.find(L'\n');
        reader.Line(text.substr(0, end));
        text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    }
}

Settings ReadSettings(const std::wstring& file, const SettingsFaults& faults) {
    Settings settings;
    settings.file = file;
    if (file.empty()) return settings;
    const auto text = ReadTextFile(file);
    if (text) {
        ParseSettings(*text, FolderOf(file), settings, faults);
    } else if (faults) {
        faults(L"settings: " + file + L" cannot be read, the defaults are used");
    }
    return settings;
}

}  // namespace zu::host
