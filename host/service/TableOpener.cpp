#include "host/service/TableOpener.h"

#include <windows.h>

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "com/Bstr.h"
#include "host/engine/EngineState.h"
#include "host/engine/SettingsStore.h"
#include "host/service/TableReuse.h"
#include "host/service/TechnologyCatalogue.h"
#include "host/service/WatchedFiles.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

std::string Utf8(std::wstring_view text) {
    return text::ToUtf8(com::AsUtf16(text));
}

/// The process's current folder. It is asked for with every table, and is short most of the time.
class CurrentFolder {
public:
    CurrentFolder() {
        const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(usual_.size()), usual_.data());
        if (length < usual_.size()) {
            name_ = {usual_.data(), length};
            return;
        }
        long_.resize(length);
        long_.resize(GetCurrentDirectoryW(length, long_.data()));
        name_ = long_;
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

    std::wstring_view name() const noexcept { return name_; }

private:
    std::array<wchar_t, MAX_PATH> usual_;
    std::wstring long_;
    std::wstring_view name_;
};

technologies::TechnologySettings TechnologySettingsOf(const Settings& settings,
                                                      std::wstring_view currentFolder) {
    technologies::TechnologySettings result;
    result.dataFolder =
        Utf8(settings.dataFolder.empty() ? currentFolder : std::wstring_view(settings.dataFolder));
    result.codePage = settings.codePage;
    result.showDeleted = settings.showDeleted;
    result.blankNumbersAreNull = settings.blankNumbersAreNull;
    result.survivePowerCut = settings.durability == Durability::Safe;
    result.lockWait = settings.lockWait;
    result.clipperLocks = settings.clipperLocks;
    result.allowStaleIndexes = settings.allowStaleIndexes;
    result.newTableFormat = Utf8(settings.newTableFormat);
    return result;
}

/// What tells one open table from another: the names, and the settings that it was opened with.
std::string ReuseName(const DatabaseName& name, const std::string& table,
                      const technologies::TechnologySettings& settings) {
    const std::string options = std::to_string(settings.codePage) + (settings.showDeleted ? "D" : "-") +
                                (settings.blankNumbersAreNull ? "N" : "-") +
                                (settings.survivePowerCut ? "S" : "-") + (settings.clipperLocks ? "C" : "-") +
                                (settings.allowStaleIndexes ? "A" : "-") + std::to_string(settings.lockWait);
    std::string key;
    for (const std::string* part :
         {&name.technology, &name.database, &table, &settings.dataFolder, &options}) {
        key += *part;
        key += '\n';
    }
    return key;
}

std::unique_ptr<technologies::Technology> Make(const std::string& name, files::FileSystem& files,
                                               const technologies::TechnologySettings& settings) {
    auto technology = TechnologyCatalogue::Make(name, files, settings);
    if (technology) return technology;
    std::string known;
    for (const std::string& each : TechnologyCatalogue::Names())
        known += (known.empty() ? "" : ", ") + each;
    throw Error(ErrorKind::NotFound, "There is no database technology \"" + name + "\", known are: " + known);
}

/// What an open table stands on, in the order in which it may go: the table first.
struct Foundation {
    WatchedFiles files{files::SystemFiles()};
    std::unique_ptr<technologies::Technology> technology;
    std::unique_ptr<technologies::Table> table;
    std::optional<OpenTable> open;
};

void TellWarnings(technologies::Table& table) {
    Messages& messages = EngineState::Current().messages;
    for (const std::string& warning : table.warnings())
        messages.Warn(com::AsWide(text::ToUtf16("Table " + table.name() + ": " + warning)));
}

TableReuse::Opened OpenNew(const DatabaseName& name, const std::string& table,
                           const technologies::TechnologySettings& settings) {
    try {
        auto opened = std::make_shared<Foundation>();
        opened->technology = Make(name.technology, opened->files, settings);
        opened->table = opened->technology->OpenTable(name.database, table);
        TellWarnings(*opened->table);
        opened->open.emplace(*opened->table);
        return {{opened, &*opened->open}, [opened = opened.get()] { return opened->files.AreUnchanged(); }};
    } catch (const Error& error) {
        throw Error(error.kind(), "Cannot open " + ShownName(name, table) + ": " + error.what());
    }
}

/// A table as callers name it, brought into the form in which it is opened. Scripts ask for the same one
/// again and again: the last one is kept.
struct Request {
    std::shared_ptr<const Settings> settings;
    std::wstring folder;  ///< the current one, where the settings name none
    std::wstring database;
    std::wstring table;

    DatabaseName name;
    std::string tableName;
    technologies::TechnologySettings technologySettings;
    std::string reuseName;
};

class LastRequest {
public:
    static LastRequest& Instance() {
        static auto* const last = new LastRequest;  // never destroyed, as TableReuse
        return *last;
    }
    std::shared_ptr<const Request> Get() const {
        const std::lock_guard lock(mutex_);
        return request_;
    }
    void Put(std::shared_ptr<const Request> request) {
        const std::lock_guard lock(mutex_);
        request_.swap(request);
    }

private:
    mutable std::mutex mutex_;
    std::shared_ptr<const Request> request_;
};

std::shared_ptr<const Request> RequestFor(std::wstring_view database, std::wstring_view table) {
    auto settings = SettingsStore::Instance().Share();
    std::optional<CurrentFolder> current;
    if (settings->dataFolder.empty()) current.emplace();
    const std::wstring_view folder = current ? current->name() : std::wstring_view();
    auto last = LastRequest::Instance().Get();
    if (last && last->settings == settings && last->folder == folder && last->database == database &&
        last->table == table)
        return last;
    auto request = std::make_shared<Request>();
    request->technologySettings = TechnologySettingsOf(*settings, folder);
    request->name = SplitDatabaseName(database);
    request->tableName = Utf8(table);
    request->reuseName = ReuseName(request->name, request->tableName, request->technologySettings);
    request->settings = std::move(settings);
    request->folder = folder;
    request->database = database;
    request->table = table;
    LastRequest::Instance().Put(request);
    return request;
}

}  // namespace

std::string ShownName(const DatabaseName& name, const std::string& table) {
    const std::string database = "database \"" + name.technology + "|" + name.database + "\"";
    return table.empty() ? database : "table \"" + table + "\" of " + database;
}

DatabaseName SplitDatabaseName(std::wstring_view name) {
    const auto bar = name.find(L'|');
    DatabaseName result;
    if (bar != std::wstring_view::npos) {
        result.technology = Utf8(name.substr(0, bar));
        name.remove_prefix(bar + 1);
    }
    if (result.technology.empty())
        result.technology = Utf8(SettingsStore::Instance().Share()->defaultTechnology);
    result.database = Utf8(name);
    return result;
}

std::unique_ptr<technologies::Technology> MakeTechnology(const std::string& name) {
    return Make(name, files::SystemFiles(),
                TechnologySettingsOf(*SettingsStore::Instance().Share(), CurrentFolder().name()));
}

std::shared_ptr<OpenTable> OpenTableByName(std::wstring_view database, std::wstring_view table) {
    const auto request = RequestFor(database, table);
    return TableReuse::Instance().Open(request->reuseName, request->settings->reuseTables, [&] {
        return OpenNew(request->name, request->tableName, request->technologySettings);
    });
}

}  // namespace zu::host
