#include "host/technologies/dbf/maintenance/TableRebuild.h"

#include <array>
#include <memory>
#include <utility>

#include "host/technologies/ProgressMeter.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/maintenance/FileSwap.h"
#include "host/technologies/dbf/maintenance/TableCopy.h"
#include "host/technologies/dbf/maintenance/TagDefinitions.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

using technologies::Progress;
using technologies::ProgressMeter;
using technologies::TechnologySettings;

constexpr files::OpenOptions kNewFile{files::Access::ReadWrite, files::Creation::CreateAlways, true};

std::unique_ptr<DbfTable> OpenAlone(files::FileSystem& files, const std::string& path,
                                    const TechnologySettings& settings) {
    auto table = DbfTable::OpenExclusive(files, path, settings);
    if (!table->isUpdateable())
        throw Error(ErrorKind::Unsupported,
                    "The table " + table->name() + " can only be read: " + table->WhyReadOnly() + ".");
    return table;
}

void SetTableFlags(files::FileSystem& files, const std::string& tablePath, std::byte flags) {
    const auto file = files.Open(tablePath, {files::Access::ReadWrite, files::Creation::OpenExisting, false});
    file->WriteAt(header::kTableFlags, std::array{flags});
}

std::string IndexPath(const DbfTable::Content& content) {
    return content.paths.index ? *content.paths.index : files::WithExtension(content.paths.table, ".cdx");
}

// Builds the production index of `records`, whose layout is that of `content`.
void BuildIndex(files::FileSystem& files, const DbfTable::Content& content, RecordFile& records,
                const std::vector<cdx::TagDefinition>& tags, FileSwap& swap, ProgressMeter& meter) {
    if (tags.empty()) return;
    const auto index = files.Open(swap.Prepare(IndexPath(content)), kNewFile);
    cdx::BuildCdx(
        *index, tags,
        {content.layout.record, records, content.layout.record.tableName, *content.layout.record.codePage},
        &meter);
}

bool HasDeletedRecords(RecordFile& records) {
    for (std::uint32_t number = 1; number <= records.Count(); ++number)
        if (*records.Record(number) == std::byte{kDeletedMark}) return true;
    return false;
}

std::uint32_t Rewrite(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
                      TableCopy::Kept kept, Progress* progress) {
    auto table = OpenAlone(files, path, settings);
    const DbfTable::Content content = table->content();
    const std::uint32_t before = content.records.Count();
    if (kept == TableCopy::Kept::Live && !content.paths.memo && !HasDeletedRecords(content.records)) return 0;
    FileSwap swap(files, content.paths.table);
    const auto tags = DefinitionsOf(files, content);
    ProgressMeter meter(progress, std::uint64_t{before} * (1 + tags.size()));
    TableCopy copy(files, content, swap, meter);
    const std::uint32_t count = copy.Write(kept);
    {
        auto file = files.Open(copy.path(), {});
        const DbfHeader head = DbfHeader::Read(*file);
        RecordFile records(std::move(file), head);
        BuildIndex(files, content, records, tags, swap, meter);
    }
    meter.Tell();
    table.reset();
    swap.Commit();
    return before - count;
}

// Writes the index anew with these tags; the table says from then on that it has one.
void ReplaceTags(files::FileSystem& files, std::unique_ptr<DbfTable> table,
                 const std::vector<cdx::TagDefinition>& tags, Progress* progress) {
    const DbfTable::Content content = table->content();
    FileSwap swap(files, content.paths.table);
    ProgressMeter meter(progress, std::uint64_t{content.records.Count()} * tags.size());
    BuildIndex(files, content, content.records, tags, swap, meter);
    meter.Tell();
    const bool announced = (content.header.tableFlags & kProductionIndex) != 0;
    const auto flags = static_cast<std::byte>(content.header.tableFlags | kProductionIndex);
    const std::string tablePath = content.paths.table;
    table.reset();
    swap.Commit();
    if (!announced) SetTableFlags(files, tablePath, flags);
}

void RemoveIndex(files::FileSystem& files, std::unique_ptr<DbfTable> table) {
    const DbfTable::Content content = table->content();
    const std::string tablePath = content.paths.table;
    FileSwap swap(files, tablePath);
    swap.Remove(*content.paths.index);
    const auto flags = static_cast<std::byte>(content.header.tableFlags & ~kProductionIndex);
    table.reset();
    // First nobody expects the index any more: an index file that nobody expects does no harm.
    SetTableFlags(files, tablePath, flags);
    swap.Commit();
}

void AddTag(files::FileSystem& files, std::unique_ptr<DbfTable> table, const cdx::TagDefinition& tag,
            Progress* progress) {
    auto tags = DefinitionsOf(files, table->content());
    std::erase_if(tags,
                  [&](const cdx::TagDefinition& other) { return files::SameName(other.name, tag.name); });
    tags.push_back(tag);
    ReplaceTags(files, std::move(table), tags, progress);
}

}  // namespace

std::uint32_t Pack(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
                   Progress* progress) {
    return Rewrite(files, path, settings, TableCopy::Kept::Live, progress);
}

void Zap(files::FileSystem& files, const std::string& path, const TechnologySettings& settings) {
    Rewrite(files, path, settings, TableCopy::Kept::None, nullptr);
}

void Reindex(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
             Progress* progress) {
    auto table = OpenAlone(files, path, settings);
    const auto tags = DefinitionsOf(files, table->content());
    if (!tags.empty()) ReplaceTags(files, std::move(table), tags, progress);
}

void CreateTag(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
               const cdx::TagDefinition& tag, Progress* progress) {
    AddTag(files, OpenAlone(files, path, settings), tag, progress);
}

void CreateDefaultTag(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
                      const std::vector<IndexField>& key, Progress* progress) {
    auto table = OpenAlone(files, path, settings);
    const cdx::TagDefinition tag = DefaultTag(table->content().layout, key);
    AddTag(files, std::move(table), tag, progress);
}

void DropTag(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
             std::string_view name) {
    auto table = OpenAlone(files, path, settings);
    const DbfTable::Content content = table->content();
    auto tags = DefinitionsOf(files, content);
    if (std::erase_if(tags, [&](const cdx::TagDefinition& tag) { return files::SameName(tag.name, name); }) ==
        0)
        throw Error(ErrorKind::NotFound, "The table " + content.layout.record.tableName + " has no index \"" +
                                             std::string(name) + "\".");
    if (tags.empty())
        RemoveIndex(files, std::move(table));
    else
        ReplaceTags(files, std::move(table), tags, nullptr);
}

}  // namespace zu::dbf::maintenance
