#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/Table.h"
#include "host/technologies/Technology.h"
#include "host/technologies/dbf/CompanionFiles.h"
#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/FieldReader.h"
#include "host/technologies/dbf/MemoFields.h"
#include "host/technologies/dbf/RecordFile.h"
#include "host/technologies/dbf/TableLayout.h"
#include "host/technologies/dbf/cdx/IndexSet.h"
#include "host/technologies/dbf/locking/FileLock.h"
#include "host/technologies/dbf/write/AppendBatch.h"
#include "host/technologies/dbf/write/EditedTable.h"
#include "host/technologies/dbf/write/WriteFiles.h"
#include "portable/files/File.h"

namespace zu::dbf {

/// An open DBF file with its memo file and its production index.
///
/// Other processes may change the files meanwhile: a selection sees the records as they are when it begins.
class DbfTable final : public technologies::Table {
public:
    /// Opens the table in the file at `path`. Errors: those of the file system (NotFound, AccessDenied,
    /// Locked) and of DbfHeader::Read. A memo or index file that is missing or unusable is a warning.
    static std::unique_ptr<DbfTable> Open(files::FileSystem& files, const std::string& path,
                                          const technologies::TechnologySettings& settings);

    /// The same for work on the files as a whole: Locked when anybody else has the table open, and nobody can
    /// open it meanwhile.
    static std::unique_ptr<DbfTable> OpenExclusive(files::FileSystem& files, const std::string& path,
                                                   const technologies::TechnologySettings& settings,
                                                   files::Access access = files::Access::ReadWrite);

    /// The parts of the table, for work on its files as a whole. They live as long as the table.
    struct Content {
        const write::TablePaths& paths;
        const DbfHeader& header;
        const TableLayout& layout;
        RecordFile& records;
        MemoFields* memos;  ///< null: no memo fields
    };
    Content content() noexcept { return {paths_, header_, layout_, records_, memos_.get()}; }

    const std::string& name() const noexcept override { return layout_.record.tableName; }
    const std::vector<technologies::FieldDescription>& fields() const noexcept override {
        return layout_.descriptions;
    }
    std::uint32_t RecordCount() override;
    bool isUpdateable() const noexcept override;
    std::string WhyReadOnly() const override;

    bool IsDeleted(std::uint32_t record) override;
    void ReadValue(std::uint32_t record, std::size_t field, technologies::Value& out) override;
    bool ReadRow(std::uint32_t record, std::span<const std::size_t> chosen,
                 technologies::RowCells& out) override;
    std::optional<std::vector<textio::StoredField>> StoredForm(std::span<const std::size_t> chosen,
                                                               unsigned codePage) override;
    /// Only while the file is mapped, and no batch may let it be mapped anew.
    std::size_t LocateRecords(std::span<const std::uint32_t> records, const char** out) override;

    const std::vector<technologies::IndexDescription>& indexes() override;
    std::optional<std::size_t> FindIndex(std::string_view name) override;
    std::optional<std::size_t> DefaultIndex() override;

    std::vector<std::uint32_t> Select(const technologies::Selection& selection) override;
    std::vector<std::uint32_t> Seek(std::size_t index,
                                    const std::vector<technologies::KeyCriterion>& criteria,
                                    std::uint32_t maxRecords, bool includeDeleted) override;

    std::unique_ptr<technologies::RecordEdit> EditRecord(std::uint32_t record) override;
    std::unique_ptr<technologies::RecordEdit> NewRecord() override;
    void MarkRecords(std::span<const std::uint32_t> records, bool deleted,
                     technologies::MarkOutcome& outcome) override;
    /// Gathers the keys of new records, unless each change must survive a power cut or a tag refuses equal
    /// keys.
    std::unique_ptr<technologies::Batch> BeginBatch() override;

    const std::vector<std::string>& warnings() const noexcept override { return warnings_; }
    /// "Format", "Code page", "Last change", "Table file", "Memo file" and "Index file", each file with its
    /// size in bytes ("Memo size").
    std::vector<technologies::TableFact> Facts() override;

    const DbfHeader& header() const noexcept { return header_; }
    const text::CodePage& codePage() const noexcept { return *layout_.record.codePage; }

private:
    DbfTable(files::FileSystem& files, const std::string& path, std::unique_ptr<files::File> file,
             const technologies::TechnologySettings& settings);

    TableLayout MakeLayout(const technologies::TechnologySettings& settings);
    void WarnAboutCount();
    void OpenMemos();
    void OpenIndexes();
    void Warn(const std::string& text) { warnings_.push_back(path_ + ": " + text); }

    /// The files, opened for writing when they are first needed so.
    write::EditedTable Writable();
    /// Gives keys to records that a process that died has added without them.
    void CompleteRecords();
    void EndRun();
    locking::FileLock LockIndex();
    void Refresh();
    void NoticeChanges();
    void NoticeIndexes();
    void RefreshIndexes();
    std::optional<std::vector<std::uint32_t>> SeekUnlocked(
        std::size_t index, const std::vector<technologies::KeyCriterion>& criteria, std::uint32_t maxRecords,
        bool includeDeleted);
    const std::byte* RequireRecord(std::uint32_t record);
    void RequireIndex(std::size_t index) const;

    files::FileSystem& files_;
    std::string path_;
    std::vector<std::string> warnings_;
    CompanionFiles companions_;
    DbfHeader header_;
    TableLayout layout_;
    RecordFile records_;
    std::unique_ptr<MemoFields> memos_;
    std::unique_ptr<cdx::IndexSet> indexes_;
    bool blankNumbersAreNull_;
    bool showDeleted_;
    bool hasForeignIndex_ = false;  ///< an index of dBASE, which writing would leave behind
    write::WriteSettings writeSettings_;
    write::TablePaths paths_;
    std::unique_ptr<write::WriteFiles> writeFiles_;
    std::unique_ptr<write::AppendBatch> batch_;
};

}  // namespace zu::dbf
