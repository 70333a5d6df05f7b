#include "host/technologies/dbf/DbfTable.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

#include "host/technologies/dbf/CodePageChoice.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/RecordSelector.h"
#include "host/technologies/dbf/maintenance/FileSwap.h"
#include "host/technologies/dbf/write/DbfRecordEdit.h"
#include "host/technologies/dbf/write/RecordMarks.h"
#include "host/technologies/dbf/write/TableBatch.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf {

namespace {

struct MemoCandidate {
    const char* extension;
    MemoFormat format;
};

/// Where to look for the memo file of a version, most likely first.
std::vector<MemoCandidate> MemoCandidates(MemoFormat format) {
    switch (format) {
        case MemoFormat::Fpt:
            return {{".fpt", MemoFormat::Fpt}};
        case MemoFormat::Dbt3:
            return {{".dbt", MemoFormat::Dbt3}};
        case MemoFormat::Dbt4:
            return {{".dbt", MemoFormat::Dbt4}};
        case MemoFormat::Smt:
            return {{".smt", MemoFormat::Smt}};
        default:
            return {{".fpt", MemoFormat::Fpt}, {".dbt", MemoFormat::Dbt3}};
    }
}

/// The first line of a small text file.
std::string ReadLine(files::FileSystem& files, const std::string& path) {
    std::array<char, 64> bytes{};
    const auto file = files.Open(path, {});
    const std::size_t count = file->ReadAt(0, std::as_writable_bytes(std::span(bytes)));
    const std::string_view text(bytes.data(), count);
    return std::string(text.substr(0, text.find_first_of("\r\n")));
}

write::WriteSettings WriteSettingsOf(const technologies::TechnologySettings& settings) {
    write::WriteSettings result;
    result.scheme = settings.clipperLocks ? locking::LockScheme::Clipper : locking::LockScheme::FoxPro;
    result.wait = std::chrono::milliseconds(settings.lockWait);
    result.durability =
        settings.survivePowerCut ? transaction::Durability::PowerCut : transaction::Durability::Process;
    result.staleTags = settings.allowStaleIndexes ? cdx::StaleTags::Allow : cdx::StaleTags::Refuse;
    return result;
}

/// Undoes what a process that died in the middle of a change has left. Answers whether records are left that
/// have no keys yet.
bool Recover(files::FileSystem& files, const std::string& path) {
    maintenance::FileSwap::Finish(files, path);
    write::TablePaths paths;
    paths.table = path;
    if (!transaction::Journal::MayHoldChange(files, paths.journal())) return false;
    CompanionFiles companions(files, path);
    paths.memo = companions.Find(".fpt");
    if (!paths.memo) paths.memo = companions.Find(".dbt");
    paths.index = companions.Find(".cdx");
    return write::RecoverTable(files, paths).keysMissingFrom.has_value();
}

}  // namespace

std::unique_ptr<DbfTable> DbfTable::Open(files::FileSystem& files, const std::string& path,
                                         const technologies::TechnologySettings& settings) {
    const bool incomplete = Recover(files, path);
    std::unique_ptr<DbfTable> table(new DbfTable(files, path, files.Open(path, {}), settings));
    if (incomplete) table->CompleteRecords();
    return table;
}

std::unique_ptr<DbfTable> DbfTable::OpenExclusive(files::FileSystem& files, const std::string& path,
                                                  const technologies::TechnologySettings& settings,
                                                  files::Access access) {
    // What is left to do takes the table opened for all.
    if (Recover(files, path)) Open(files, path, settings);
    auto file = files.Open(path, {access, files::Creation::OpenExisting, true});
    return std::unique_ptr<DbfTable>(new DbfTable(files, path, std::move(file), settings));
}

DbfTable::DbfTable(files::FileSystem& files, const std::string& path, std::unique_ptr<files::File> file,
                   const technologies::TechnologySettings& settings)
    : files_(files),
      path_(path),
      companions_(files, path),
      header_(DbfHeader::Read(*file)),
      layout_(MakeLayout(settings)),
      records_(std::move(file), header_),
      blankNumbersAreNull_(settings.blankNumbersAreNull),
      showDeleted_(settings.showDeleted),
      writeSettings_(WriteSettingsOf(settings)) {
    paths_.table = path;
    WarnAboutCount();
    OpenMemos();
    OpenIndexes();
}

TableLayout DbfTable::MakeLayout(const technologies::TechnologySettings& settings) {
    warnings_ = header_.warnings;
    std::string sideFile;
    if (const auto found = companions_.Find(".cpg")) {
        try {
            sideFile = ReadLine(files_, *found);
        } catch (const Error& error) {
            warnings_.emplace_back(error.what());
        }
    }
    std::vector<std::string> doubts;
    const text::CodePage& codePage = ChooseCodePage(header_, sideFile, settings.codePage, doubts);
    TableLayout layout = TableLayout::Make(header_, codePage, std::string(files::Stem(path_)));
    for (const std::string& doubt : doubts)
        Warn(doubt);
    for (const std::string& doubt : layout.warnings)
        Warn(doubt + ".");
    return layout;
}

void DbfTable::WarnAboutCount() {
    const std::uint32_t count = records_.Count();
    const std::uint32_t stated = records_.statedCount();
    if (count < stated) {
        Warn("the header counts " + std::to_string(stated) + " records, but the file holds only " +
             std::to_string(count) + " whole ones; it was cut.");
    } else if (count > stated) {
        Warn("the header counts " + std::to_string(stated) + " records, but the file holds " +
             std::to_string(count) + "; all of them are read.");
    }
}

void DbfTable::OpenMemos() {
    if (!layout_.hasMemos()) return;
    std::unique_ptr<MemoFile> file;
    bool found = false;
    for (const MemoCandidate& candidate : MemoCandidates(header_.version.memo)) {
        const auto path = companions_.Find(candidate.extension);
        if (!path) continue;
        found = true;
        file = MemoFile::Open(files_.Open(*path, {}), candidate.format, warnings_);
        if (file) paths_.memo = *path;
        break;
    }
    if (!found) Warn("the memo file is missing; memo fields are read as null.");
    memos_ = std::make_unique<MemoFields>(layout_, std::move(file), warnings_);
    records_.SetMemos(memos_.get());
}

void DbfTable::OpenIndexes() {
    const bool announced = (header_.tableFlags & kProductionIndex) != 0;
    const auto path =
        header_.version.dBase4 || header_.version.dBase7 ? std::nullopt : companions_.Find(".cdx");
    if (!announced) {
        // Programs that do not know of an index do not keep it up to date.
        if (path) Warn("the index file " + *path + " is not used: the table does not announce it.");
        return;
    }
    if (!path) {
        hasForeignIndex_ = companions_.Find(".mdx").has_value();
        Warn(hasForeignIndex_ ? "indexes of dBASE (.mdx) are not used; selections read all records."
                              : "the index file that the table announces is missing; selections read all "
                                "records.");
        return;
    }
    paths_.index = *path;
    try {
        indexes_ = cdx::IndexSet::Open(files_.Open(*path, {}),
                                       cdx::IndexContext{layout_.record, records_, name(), codePage()});
        if (!indexes_->areUsable()) RefreshIndexes();
        for (std::string& warning : indexes_->warnings())
            warnings_.push_back(std::move(warning));
    } catch (const Error& error) {
        // An index that is just being built, or that cannot be read, is a matter of speed only.
        warnings_.emplace_back(error.what());
    }
}

void DbfTable::CompleteRecords() {
    try {
        const write::EditedTable table = Writable();
        write::Change change(table.files);
        write::TakeOver(change, table);
        warnings_.clear();
        for (const std::string& warning : header_.warnings)
            warnings_.push_back(warning);
        for (const std::string& doubt : layout_.warnings)
            Warn(doubt + ".");
        WarnAboutCount();
        if (!indexes_) return;
        for (std::string& warning : indexes_->warnings())
            warnings_.push_back(std::move(warning));
    } catch (const Error& error) {
        // The records can be read; whoever changes the table will have to complete it.
        Warn(std::string("records that were added last have no index keys yet: ") + error.what());
    }
}

// Whoever looks into the indexes must find all records in them.
void DbfTable::EndRun() {
    if (batch_) batch_->EndRun();
}

void DbfTable::Refresh() {
    EndRun();
    records_.Refresh();
    NoticeIndexes();
}

void DbfTable::NoticeChanges() {
    records_.NoticeGrowth();
    NoticeIndexes();
}

// An index whose counter stands still while records came was left behind by their writer, unless they are
// ours.
void DbfTable::NoticeIndexes() {
    if (!indexes_) return;
    const bool foreign = records_.TakeForeignRecords();
    if (!indexes_->IsOutdated() && !foreign) return;
    EndRun();
    RefreshIndexes();
}

// Records and index are read one after the other: what another process writes between the two must not make
// the index look as if it belonged to other records.
void DbfTable::RefreshIndexes() {
    constexpr int kMostTries = 8;  // then somebody writes all the time, and the next use looks again
    for (int i = 0; i < kMostTries; ++i) {
        records_.Refresh();
        indexes_->Refresh();
        const std::uint32_t count = records_.Count();
        if (indexes_->areUsable()) break;
        records_.Refresh();
        if (!indexes_->IsOutdated() && records_.Count() == count) break;
    }
    records_.TakeForeignRecords();
}

std::uint32_t DbfTable::RecordCount() {
    NoticeChanges();
    return records_.Count();
}

bool DbfTable::isUpdateable() const noexcept {
    // What the file system says of the files shows when they are opened for writing.
    return header_.isConsistent && !header_.version.dBase7 && !header_.version.encrypted &&
           header_.version.known && (indexes_ != nullptr || !paths_.index) &&
           (!hasForeignIndex_ || writeSettings_.staleTags == cdx::StaleTags::Allow);
}

std::string DbfTable::WhyReadOnly() const {
    if (isUpdateable()) return {};
    if (!header_.isConsistent) return "its fields and its record length contradict each other";
    if (hasForeignIndex_)
        return "its index of dBASE (.mdx) could not be kept up to date; the setting Data.AllowStaleIndexes = "
               "yes "
               "allows it all the same";
    if (header_.version.dBase7 || header_.version.encrypted || !header_.version.known)
        return "tables of its kind (" + std::string(header_.version.name) + ") are not written";
    return "its index file cannot be used";
}

write::EditedTable DbfTable::Writable() {
    if (!isUpdateable())
        throw Error(ErrorKind::Unsupported,
                    "The table " + name() + " can only be read: " + WhyReadOnly() + ".");
    if (!writeFiles_)
        writeFiles_ = std::make_unique<write::WriteFiles>(files_, paths_, header_, writeSettings_);
    write::EditedTable table{
        header_, layout_, records_, memos_.get(), indexes_.get(), *writeFiles_, blankNumbersAreNull_};
    if (!batch_) batch_ = std::make_unique<write::AppendBatch>(table);
    table.batch = batch_.get();
    return table;
}

std::unique_ptr<technologies::Batch> DbfTable::BeginBatch() {
    const write::EditedTable table = Writable();
    if (writeSettings_.durability == transaction::Durability::PowerCut ||
        (indexes_ && indexes_->refusesEqualKeys()))
        return Table::BeginBatch();
    return std::make_unique<write::TableBatch>(table);
}

std::unique_ptr<technologies::RecordEdit> DbfTable::EditRecord(std::uint32_t record) {
    const write::EditedTable table = Writable();
    records_.Forget(record);
    return std::make_unique<write::DbfRecordEdit>(table, record, RequireRecord(record));
}

std::unique_ptr<technologies::RecordEdit> DbfTable::NewRecord() {
    return std::make_unique<write::DbfRecordEdit>(Writable());
}

void DbfTable::MarkRecords(std::span<const std::uint32_t> records, bool deleted,
                           technologies::MarkOutcome& outcome) {
    using write::RecordMarks;
    while (!records.empty()) {
        const auto block = records.first(std::min(records.size(), RecordMarks::kLongestBlock));
        EndRun();
        if (block.size() < RecordMarks::kShortestBlock ||
            !RecordMarks(Writable(), deleted).MarkBlock(block, outcome))
            Table::MarkRecords(block, deleted, outcome);
        records = records.subspan(block.size());
    }
}

const std::byte* DbfTable::RequireRecord(std::uint32_t record) {
    const std::byte* bytes = records_.Record(record);
    if (!bytes && record != 0 && record <= RecordCount()) bytes = records_.Record(record);
    if (!bytes) {
        throw Error(ErrorKind::NotFound, "The table " + name() + " has no record " + std::to_string(record) +
                                             "; it has " + std::to_string(records_.Count()) + " records.");
    }
    return bytes;
}

bool DbfTable::IsDeleted(std::uint32_t record) {
    return *RequireRecord(record) == std::byte{kDeletedMark};
}

void DbfTable::ReadValue(std::uint32_t record, std::size_t field, technologies::Value& out) {
    if (field >= layout_.kinds.size()) {
        throw Error(ErrorKind::NotFound, "The table " + name() + " has no field number " +
                                             std::to_string(field) + "; it has " +
                                             std::to_string(layout_.kinds.size()) + " fields.");
    }
    FieldReader(layout_, memos_.get(), blankNumbersAreNull_).Read(RequireRecord(record), field, out);
}

const std::vector<technologies::IndexDescription>& DbfTable::indexes() {
    static const std::vector<technologies::IndexDescription> none;
    return indexes_ ? indexes_->descriptions() : none;
}

std::optional<std::size_t> DbfTable::FindIndex(std::string_view name) {
    return indexes_ ? indexes_->Find(name) : std::nullopt;
}

std::optional<std::size_t> DbfTable::DefaultIndex() {
    return indexes_ ? indexes_->Default() : std::nullopt;
}

void DbfTable::RequireIndex(std::size_t index) const {
    const std::size_t count = indexes_ ? indexes_->descriptions().size() : 0;
    if (index >= count) {
        throw Error(ErrorKind::NotFound, "The table " + name() + " has no index number " +
                                             std::to_string(index) + "; it has " + std::to_string(count) +
                                             " indexes.");
    }
    const technologies::IndexDescription& description = indexes_->descriptions()[index];
    if (!description.usable) {
        throw Error(ErrorKind::Unsupported, "The index " + description.name + " of the table " + name() +
                                                " cannot be used: " + description.reason);
    }
}

// Half of a change is no tree. Writers have this lock alone while they change pages; one that died with it
// has left a journal.
locking::FileLock DbfTable::LockIndex() {
    constexpr int kMostDead = 2;  // processes that die one after the other while we wait
    for (int i = 0;; ++i) {
        locking::FileLock lock = locking::FileLock::Take(
            indexes_->file(), {{locking::IndexLock(writeSettings_.scheme), locking::LockRange{}}, 1},
            files::LockMode::Shared, writeSettings_.wait, "The index file " + *paths_.index);
        // What a change leaves behind it marks in the index.
        if (indexes_->isUnmarked()) return lock;
        if (i == kMostDead || !transaction::Journal::MayHoldChange(files_, paths_.journal())) return lock;
        lock.Release();
        if (Recover(files_, path_)) CompleteRecords();
    }
}

std::vector<std::uint32_t> DbfTable::Select(const technologies::Selection& selection) {
    EndRun();
    const bool isAll = expression::IsBlank(selection.condition);
    locking::FileLock lock;
    if (indexes_ && (selection.index || !isAll)) lock = LockIndex();
    Refresh();
    if (selection.index) RequireIndex(*selection.index);
    RecordSelector selector(records_, indexes_.get(), selection.includeDeleted || showDeleted_,
                            selection.maxRecords);
    selector.Hold(std::move(lock));
    if (isAll) return selector.Find(nullptr, selection.index);
    const auto condition = expression::Program::Compile(selection.condition, layout_.record);
    return selector.Find(&condition, selection.index);
}

// Locks and the look for a journal cost many times what a search does. Nothing where they are needed.
std::optional<std::vector<std::uint32_t>> DbfTable::SeekUnlocked(
    std::size_t index, const std::vector<technologies::KeyCriterion>& criteria, std::uint32_t maxRecords,
    bool includeDeleted) {
    if (!indexes_ || !records_.IsAsBefore()) return std::nullopt;
    RecordSelector selector(records_, nullptr, includeDeleted || showDeleted_, maxRecords);
    std::vector<std::uint32_t> found;
    const bool certain = indexes_->SeekUnlocked(index, criteria, [&](std::uint32_t record) {
        records_.Expect(record);
        return selector.Take(record, found);
    });
    if (!certain) return std::nullopt;
    return found;
}

std::vector<std::uint32_t> DbfTable::Seek(std::size_t index,
                                          const std::vector<technologies::KeyCriterion>& criteria,
                                          std::uint32_t maxRecords, bool includeDeleted) {
    EndRun();
    if (auto found = SeekUnlocked(index, criteria, maxRecords, includeDeleted)) return std::move(*found);
    locking::FileLock lock;
    if (indexes_) lock = LockIndex();
    NoticeChanges();
    RequireIndex(index);
    RecordSelector selector(records_, indexes_.get(), includeDeleted || showDeleted_, maxRecords);
    std::vector<std::uint32_t> found;
    indexes_->Seek(index, criteria, [&](std::uint32_t record) { return selector.Take(record, found); });
    return found;
}

}  // namespace zu::dbf
