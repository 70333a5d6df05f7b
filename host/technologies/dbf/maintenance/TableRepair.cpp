#include "host/technologies/dbf/maintenance/TableRepair.h"

#include <memory>
#include <utility>

#include "host/technologies/ProgressMeter.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/maintenance/FileBackup.h"
#include "host/technologies/dbf/maintenance/FileSwap.h"
#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "host/technologies/dbf/maintenance/TableCopy.h"
#include "host/technologies/dbf/maintenance/TagDefinitions.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

using technologies::ProgressMeter;
using technologies::TechnologySettings;

class TableRepair {
public:
    TableRepair(files::FileSystem& files, std::unique_ptr<DbfTable> table, technologies::Progress* progress)
        : files_(files),
          table_(std::move(table)),
          content_(table_->content()),
          swap_(files, content_.paths.table),
          backup_(files),
          meter_(progress, content_.records.Count()) {}

    void Run(std::vector<std::string>& done) {
        const bool had = (content_.header.tableFlags & kProductionIndex) != 0;
        const auto tags = ReadableTags(done);
        const std::uint32_t stated = content_.records.statedCount();
        TableCopy copy(files_, content_, swap_, meter_);
        copy.Mend(done);
        copy.AnnounceIndex(content_.paths.index ? !tags.empty() : had && content_.header.version.dBase4);
        const std::uint32_t count = copy.Write(TableCopy::Kept::All);
        if (count != stated)
            done.push_back("The header counted " + std::to_string(stated) + " records; the table has " +
                           std::to_string(count) + ".");
        BuildIndex(copy.path(), tags, done);
        meter_.Tell();
        const write::TablePaths paths = content_.paths;
        table_.reset();  // which lets the files go
        KeepOldFiles(paths, done);
        swap_.Commit();
        backup_.Keep();
    }

private:
    // The tags that can be built anew; what is said about the others goes into the report.
    std::vector<cdx::TagDefinition> ReadableTags(std::vector<std::string>& done) {
        std::vector<cdx::TagDefinition> tags;
        if (!content_.paths.index) return tags;
        try {
            tags = DefinitionsOf(files_, content_, &done);
        } catch (const Error& error) {
            if (error.kind() != ErrorKind::Damaged && error.kind() != ErrorKind::Unsupported) throw;
            done.push_back("The index file could not be read and was taken away (" +
                           std::string(error.what()) + ").");
        }
        std::erase_if(tags, [&](const cdx::TagDefinition& tag) {
            try {
                cdx::RequireBuildable(tag, ContextOf(content_.records));
                return false;
            } catch (const Error& error) {
                done.push_back("The index " + tag.name + " could not be built anew and was left out (" +
                               error.what() + ").");
                return true;
            }
        });
        return tags;
    }

    cdx::IndexContext ContextOf(RecordFile& records) const {
        return {content_.layout.record, records, content_.layout.record.tableName,
                *content_.layout.record.codePage};
    }

    void BuildIndex(const std::string& newTable, std::vector<cdx::TagDefinition> tags,
                    std::vector<std::string>& done) {
        if (!content_.paths.index) return;
        if (tags.empty()) {
            swap_.Remove(*content_.paths.index);
            return;
        }
        auto file = files_.Open(newTable, {});
        const DbfHeader head = DbfHeader::Read(*file);
        RecordFile records(std::move(file), head);
        const std::string path = swap_.Prepare(*content_.paths.index);
        // Each tag that must not have equal keys and has some is tried as a plain one.
        for (std::size_t attempt = 0; attempt <= tags.size(); ++attempt) {
            try {
                const auto index =
                    files_.Open(path, {files::Access::ReadWrite, files::Creation::CreateAlways, true});
                cdx::BuildCdx(*index, tags, ContextOf(records), &meter_);
                break;
            } catch (const Error& error) {
                if (error.kind() != ErrorKind::AlreadyExists || attempt == tags.size()) throw;
                AllowEqualKeys(tags, error, done);
            }
        }
        done.emplace_back("The index was built anew.");
    }

    // The message names the tag whose keys are equal.
    static void AllowEqualKeys(std::vector<cdx::TagDefinition>& tags, const Error& error,
                               std::vector<std::string>& done) {
        for (cdx::TagDefinition& tag : tags) {
            if (!tag.candidate) continue;
            if (std::string(error.what()).find("\"" + tag.name + "\"") == std::string::npos) continue;
            tag.candidate = false;
            done.push_back("The index " + tag.name + " allows equal keys now, because there are some.");
        }
    }

    void KeepOldFiles(const write::TablePaths& paths, std::vector<std::string>& done) {
        std::string names = backup_.Copy(paths.table);
        for (const auto& path : {paths.memo, paths.index})
            if (path) names += ", " + backup_.Copy(*path);
        done.push_back("The old files are kept as " + names + ".");
    }

    files::FileSystem& files_;
    std::unique_ptr<DbfTable> table_;
    DbfTable::Content content_;
    FileSwap swap_;
    FileBackup backup_;
    ProgressMeter meter_;
};

// A journal that cannot be followed would keep everybody out of the table.
void SetJournalAside(files::FileSystem& files, const std::string& path, std::vector<std::string>& done) {
    write::TablePaths paths;
    paths.table = path;
    const std::string journal = paths.journal();
    if (!files.Exists(journal)) return;
    FileBackup backup(files);
    done.push_back("The journal of an unfinished change contradicts the files and was set aside as " +
                   backup.Copy(journal) + ".");
    files.Remove(journal);
    backup.Keep();
}

}  // namespace

std::vector<std::string> RepairTable(files::FileSystem& files, const std::string& path,
                                     const TechnologySettings& settings, technologies::Progress* progress) {
    std::vector<std::string> done;
    std::unique_ptr<DbfTable> table;
    try {
        if (CheckTable(files, path, settings, progress).findings.empty()) return done;
        table = DbfTable::OpenExclusive(files, path, settings);
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::Damaged && error.kind() != ErrorKind::NotFound) throw;
        if (!files.Exists(path)) throw;
        SetJournalAside(files, path, done);
        table = DbfTable::OpenExclusive(files, path, settings);
    }
    if (!table->isUpdateable())
        throw Error(ErrorKind::Unsupported, "The table " + table->name() + " (" +
                                                table->header().version.name +
                                                ") can only be read and is not repaired.");
    TableRepair(files, std::move(table), progress).Run(done);
    return done;
}

}  // namespace zu::dbf::maintenance
