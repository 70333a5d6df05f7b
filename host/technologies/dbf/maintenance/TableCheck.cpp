#include "host/technologies/dbf/maintenance/TableCheck.h"

#include <memory>
#include <optional>
#include <utility>

#include "host/technologies/ProgressMeter.h"
#include "host/technologies/dbf/CompanionFiles.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/cdx/CdxChecker.h"
#include "host/technologies/dbf/maintenance/FieldCheck.h"
#include "host/technologies/dbf/maintenance/MemoMap.h"
#include "host/technologies/dbf/maintenance/TableCopy.h"
#include "host/technologies/dbf/maintenance/TagDefinitions.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

using technologies::CheckReport;
using technologies::ProgressMeter;
using technologies::TechnologySettings;

// A table that is wholly wrong must not fill the memory with findings.
constexpr std::size_t kMostRecordFindings = 100;

// The errors that say something about the content of files, and not about access to them.
bool IsAboutContent(ErrorKind kind) {
    return kind == ErrorKind::Damaged || kind == ErrorKind::Unsupported || kind == ErrorKind::NotFound;
}

class TableCheck {
public:
    TableCheck(files::FileSystem& files, DbfTable& table, technologies::Progress* progress)
        : files_(files),
          table_(table),
          content_(table.content()),
          meter_(progress, content_.records.Count()) {}

    CheckReport Run() {
        CheckHeader();
        CheckFlags();
        CheckRecords();
        CheckIndex();
        meter_.Tell();
        return std::move(report_);
    }

private:
    void Find(const std::string& text) {
        report_.findings.push_back(content_.paths.table + ": " + text + ".");
    }

    void FindInRecord(std::uint32_t number, const std::string& text) {
        if (++recordFindings_ < kMostRecordFindings)
            Find("record " + std::to_string(number) + ": " + text);
        else if (recordFindings_ == kMostRecordFindings)
            Find("there are more findings about records, which are left out");
    }

    void CheckHeader() {
        for (const std::string& warning : content_.header.warnings)
            report_.findings.push_back(warning);
        for (const std::string& warning : content_.layout.warnings)
            Find(warning);
        // What is wrong with the fields themselves is for people to judge.
        report_.repairable = report_.findings.empty() && table_.isUpdateable();
        const std::uint32_t count = content_.records.Count();
        const std::uint32_t stated = content_.records.statedCount();
        if (count != stated)
            Find("the header counts " + std::to_string(stated) + " records, but the file holds " +
                 std::to_string(count) + (count < stated ? " whole ones" : ""));
        if (content_.layout.hasMemos() && !content_.paths.memo) {
            Find("the memo file is missing or cannot be used");
            if (content_.header.version.memo == MemoFormat::Smt) report_.repairable = false;
        }
    }

    void CheckFlags() {
        if (!content_.header.version.visualFoxPro) return;
        const bool announced = (content_.header.tableFlags & kHasMemo) != 0;
        if (announced != content_.layout.hasMemos())
            Find(announced ? "the header announces memos, but no field has any"
                           : "the header does not announce the memos that its fields have");
    }

    void CheckRecords() {
        std::unique_ptr<files::File> memoFile;
        std::optional<MemoMap> map;
        if (content_.paths.memo) {
            memoFile = files_.Open(*content_.paths.memo, {});
            map.emplace(*memoFile, MemoFormatOfTable());
        }
        const std::uint32_t count = content_.records.Count();
        for (std::uint32_t number = 1; number <= count; ++number) {
            meter_.Step();
            const std::byte* record = content_.records.Record(number);
            if (*record != std::byte{kLiveMark} && *record != std::byte{kDeletedMark})
                FindInRecord(number, "the deletion mark is the byte " +
                                         std::to_string(std::to_integer<unsigned>(*record)) +
                                         " and not a blank or a star");
            for (std::size_t field = 0; field < content_.layout.kinds.size(); ++field)
                CheckField(number, field, record, map ? &*map : nullptr);
        }
        if (!map) return;
        for (const std::string& finding : map->Findings())
            report_.findings.push_back(finding);
    }

    void CheckField(std::uint32_t number, std::size_t field, const std::byte* record, MemoMap* map) {
        const expression::FieldLayout& layout = content_.layout.record.fields[field];
        const bool isMemo = IsMemo(content_.layout.kinds[field]);
        const std::string fault = FaultIn(content_.layout, field, record);
        if (!fault.empty()) {
            FindInRecord(number, "the field " + layout.name + " " + fault);
            // A pointer that is none can be taken away; any other value is for people to judge.
            if (!isMemo) report_.repairable = false;
            return;
        }
        if (!isMemo || content_.memos == nullptr) return;
        switch (content_.memos->Fetch(field, record, memo_)) {
            case MemoOutcome::Found:
                map->Add(*MemoBlock(record + layout.offset, layout.width), memo_.size(), number);
                break;
            case MemoOutcome::Unreadable:
                FindInRecord(number, "the memo " + layout.name + " cannot be read");
                break;
            case MemoOutcome::None:
                break;
        }
    }

    MemoFormat MemoFormatOfTable() const {
        const MemoFormat format = content_.header.version.memo;
        if (format != MemoFormat::None) return format;
        return files::SameName(files::Extension(*content_.paths.memo), ".fpt") ? MemoFormat::Fpt
                                                                               : MemoFormat::Dbt3;
    }

    void CheckIndex() {
        if (!content_.paths.index) {
            const bool announced = (content_.header.tableFlags & kProductionIndex) != 0;
            if (announced && !content_.header.version.dBase4 && !content_.header.version.dBase7 &&
                !CompanionFiles(files_, content_.paths.table).Find(".mdx"))
                Find("the index file that the header announces is missing");
            return;
        }
        cdx::CdxFile file(files_.Open(*content_.paths.index, {}));
        const cdx::IndexContext context{content_.layout.record, content_.records,
                                        content_.layout.record.tableName, *content_.layout.record.codePage};
        bool faulty = false;
        for (const cdx::Finding& finding : cdx::CheckCdx(file, context)) {
            if (finding.weight != cdx::Finding::Weight::Fault) continue;
            report_.findings.push_back(*content_.paths.index + ": " + finding.Describe() + ".");
            faulty = true;
        }
        if (!faulty) return;
        // An index is mended by building it anew, which takes that all of its tags can be.
        try {
            for (const cdx::TagDefinition& tag : DefinitionsOf(files_, content_))
                cdx::RequireBuildable(tag, context);
        } catch (const Error& error) {
            if (error.kind() == ErrorKind::IoFailure) throw;
            report_.repairable = false;
        }
    }

    files::FileSystem& files_;
    DbfTable& table_;
    DbfTable::Content content_;
    ProgressMeter meter_;
    CheckReport report_;
    std::string memo_;
    std::size_t recordFindings_ = 0;
};

}  // namespace

CheckReport CheckTable(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
                       technologies::Progress* progress) {
    std::unique_ptr<DbfTable> table;
    try {
        table = DbfTable::OpenExclusive(files, path, settings, files::Access::Read);
    } catch (const Error& error) {
        if (!IsAboutContent(error.kind()) || !files.Exists(path)) throw;
        CheckReport report;
        report.findings.emplace_back(error.what());
        report.repairable = false;
        return report;
    }
    return TableCheck(files, *table, progress).Run();
}

}  // namespace zu::dbf::maintenance
