#include "host/technologies/dbf/DbfTable.h"

#include <array>

#include "host/technologies/dbf/CodePageChoice.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/RecordSelector.h"
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

}  // namespace

std::unique_ptr<DbfTable> DbfTable::Open(files::FileSystem& files, const std::string& path,
                                         const technologies::TechnologySettings& settings) {
    return std::unique_ptr<DbfTable>(new DbfTable(files, path, files.Open(path, {}), settings));
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
      showDeleted_(settings.showDeleted) {
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
        Warn(companions_.Find(".mdx")
                 ? "indexes of dBASE (.mdx) are not used; selections read all records."
                 : "the index file that the table announces is missing; selections read all "
                   "records.");
        return;
    }
    try {
        indexes_ = cdx::IndexSet::Open(files_.Open(*path, {}),
                                       cdx::IndexContext{layout_.record, records_, name(), codePage()});
        for (std::string& warning : indexes_->warnings())
            warnings_.push_back(std::move(warning));
    } catch (const Error& error) {
        // An index that is just being built, or that cannot be read, is a matter of speed only.
        warnings_.emplace_back(error.what());
    }
}

void DbfTable::Refresh() {
    if (records_.Refresh() && indexes_) indexes_->Refresh();
}

std::uint32_t DbfTable::RecordCount() {
    if (records_.NoticeGrowth() && indexes_) indexes_->Refresh();
    return records_.Count();
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

std::vector<std::uint32_t> DbfTable::Select(const technologies::Selection& selection) {
    Refresh();
    if (selection.index) RequireIndex(*selection.index);
    RecordSelector selector(records_, indexes_.get(), selection.includeDeleted || showDeleted_,
                            selection.maxRecords);
    if (expression::IsBlank(selection.condition)) return selector.Find(nullptr, selection.index);
    const auto condition = expression::Program::Compile(selection.condition, layout_.record);
    return selector.Find(&condition, selection.index);
}

std::vector<std::uint32_t> DbfTable::Seek(std::size_t index,
                                          const std::vector<technologies::KeyCriterion>& criteria,
                                          std::uint32_t maxRecords, bool includeDeleted) {
    if (records_.NoticeGrowth() && indexes_) indexes_->Refresh();
    RequireIndex(index);
    RecordSelector selector(records_, indexes_.get(), includeDeleted || showDeleted_, maxRecords);
    std::vector<std::uint32_t> found;
    indexes_->Seek(index, criteria, [&](std::uint32_t record) { return selector.Take(record, found); });
    return found;
}

}  // namespace zu::dbf
