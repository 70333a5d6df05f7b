#include "host/technologies/dbf/maintenance/TableRebuild.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>

#include "host/technologies/dbf/BlockStream.h"
#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/FieldEncoder.h"
#include "host/technologies/dbf/MemoWriter.h"
#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "host/technologies/dbf/maintenance/FileSwap.h"
#include "host/technologies/dbf/maintenance/TagDefinitions.h"
#include "host/technologies/dbf/write/HeaderDate.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

using technologies::TechnologySettings;

constexpr files::OpenOptions kNewFile{files::Access::ReadWrite, files::Creation::CreateAlways, true};

bool IsMemo(FieldKind kind) {
    return kind == FieldKind::MemoText || kind == FieldKind::MemoBinary;
}

// Which records of the old table the new one has.
enum class Kept { Live, None };

// Copies the records that stay into a new table file, and their memos into a new memo file.
class TableCopy {
public:
    TableCopy(files::FileSystem& files, DbfTable& source, FileSwap& swap)
        : files_(files), content_(source.content()), swap_(swap), encoder_(content_.layout) {}

    /// The path of the new table.
    const std::string& path() const noexcept { return path_; }

    std::uint32_t Write(Kept kept) {
        path_ = swap_.Prepare(content_.paths.table);
        std::vector<std::byte> head = content_.records.HeaderBytes();
        const auto date = write::HeaderDate(content_.header.version, write::Today());
        std::copy(date.begin(), date.end(), head.begin() + header::kYear);
        if (kept == Kept::None) RestartNumbers(head);

        BeginMemos();
        BlockStream stream(files_.Open(path_, kNewFile));
        stream.Append(head);
        std::uint32_t count = 0;
        std::vector<std::byte> record(content_.header.recordLength);
        for (std::uint32_t number = 1; kept == Kept::Live && number <= content_.records.Count(); ++number) {
            const std::byte* bytes = content_.records.Record(number);
            if (*bytes == std::byte{kDeletedMark}) continue;
            std::memcpy(record.data(), bytes, record.size());
            if (memos_) MoveMemos(number, record.data());
            stream.Append(record);
            ++count;
        }
        stream.Append(std::array{std::byte{kEndOfFile}});
        stream.Drain();
        std::array<std::byte, 4> stated{};
        StoreLittle(stated.data(), count);
        stream.file().WriteAt(header::kRecordCount, stated);
        if (memos_) memos_->Close();
        memos_.reset();  // lets the file go, so that it can be swapped in
        return count;
    }

private:
    // Memo files of dBASE IV are kept as they are: only their own program knows its lists of free blocks.
    void BeginMemos() {
        if (!content_.paths.memo || content_.header.version.memo == MemoFormat::Dbt4) return;
        const bool fpt = files::SameName(files::Extension(*content_.paths.memo), ".fpt");
        memos_ = MemoWriter::Make(files_.Open(swap_.Prepare(*content_.paths.memo), kNewFile),
                                  fpt ? MemoFormat::Fpt : MemoFormat::Dbt3);
    }

    void MoveMemos(std::uint32_t number, std::byte* record) {
        for (std::size_t field = 0; field < content_.layout.kinds.size(); ++field) {
            if (!IsMemo(content_.layout.kinds[field])) continue;
            const auto outcome = content_.memos->Fetch(field, record, memo_);
            if (outcome == MemoOutcome::Unreadable)
                throw Error(ErrorKind::Damaged,
                            "The memo " + content_.layout.record.fields[field].name + " of record " +
                                std::to_string(number) + " of the table " + content_.layout.record.tableName +
                                " cannot be read; packing would lose it. Repair the table first.");
            const bool isText = content_.layout.kinds[field] == FieldKind::MemoText;
            const auto bit = content_.layout.record.fields[field].nullBit;
            if (bit >= 0 && outcome == MemoOutcome::None) continue;
            encoder_.SetMemoBlock(record, field, memo_.empty() ? 0 : memos_->Append(memo_, isText));
        }
    }

    void RestartNumbers(std::vector<std::byte>& head) const {
        for (std::size_t i = 0; i < content_.header.fields.size(); ++i) {
            if ((content_.header.fields[i].flags & kAutoIncrement) != kAutoIncrement) continue;
            const std::size_t at = header::kSize + i * descriptor::kSize + descriptor::kNextNumber;
            if (at + 4 <= head.size()) StoreLittle<std::uint32_t>(head.data() + at, 1);
        }
    }

    files::FileSystem& files_;
    DbfTable::Content content_;
    FileSwap& swap_;
    FieldEncoder encoder_;
    std::string path_;
    std::unique_ptr<MemoWriter> memos_;
    std::string memo_;
};

std::unique_ptr<DbfTable> OpenAlone(files::FileSystem& files, const std::string& path,
                                    const TechnologySettings& settings) {
    auto table = DbfTable::OpenExclusive(files, path, settings);
    const DbfHeader& head = table->header();
    if (!table->isUpdateable())
        throw Error(ErrorKind::Unsupported,
                    "The table " + table->name() + " (" + head.version.name + ") can only be read.");
    return table;
}

std::string IndexPath(const DbfTable::Content& content) {
    return content.paths.index ? *content.paths.index : files::WithExtension(content.paths.table, ".cdx");
}

// Builds the production index of `records`, whose layout is that of `content`.
void BuildIndex(files::FileSystem& files, const DbfTable::Content& content, RecordFile& records,
                const std::vector<cdx::TagDefinition>& tags, FileSwap& swap) {
    if (tags.empty()) return;
    const auto index = files.Open(swap.Prepare(IndexPath(content)), kNewFile);
    cdx::BuildCdx(
        *index, tags,
        {content.layout.record, records, content.layout.record.tableName, *content.layout.record.codePage});
}

std::uint32_t Rewrite(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
                      Kept kept) {
    auto table = OpenAlone(files, path, settings);
    const DbfTable::Content content = table->content();
    const std::uint32_t before = content.records.Count();
    if (kept == Kept::Live && !content.paths.memo) {
        bool deleted = false;
        for (std::uint32_t number = 1; number <= before && !deleted; ++number)
            deleted = *content.records.Record(number) == std::byte{kDeletedMark};
        if (!deleted) return 0;
    }
    FileSwap swap(files, content.paths.table);
    const auto tags = DefinitionsOf(files, content);
    TableCopy copy(files, *table, swap);
    const std::uint32_t count = copy.Write(kept);
    {
        auto file = files.Open(copy.path(), {});
        const DbfHeader head = DbfHeader::Read(*file);
        RecordFile records(std::move(file), head);
        BuildIndex(files, content, records, tags, swap);
    }
    table.reset();
    swap.Commit();
    return before - count;
}

}  // namespace

std::uint32_t Pack(files::FileSystem& files, const std::string& path, const TechnologySettings& settings) {
    return Rewrite(files, path, settings, Kept::Live);
}

void Zap(files::FileSystem& files, const std::string& path, const TechnologySettings& settings) {
    Rewrite(files, path, settings, Kept::None);
}

void Reindex(files::FileSystem& files, const std::string& path, const TechnologySettings& settings) {
    auto table = OpenAlone(files, path, settings);
    const DbfTable::Content content = table->content();
    const auto tags = DefinitionsOf(files, content);
    FileSwap swap(files, content.paths.table);
    BuildIndex(files, content, content.records, tags, swap);
    table.reset();
    if (!tags.empty()) swap.Commit();
}

void CreateTag(files::FileSystem& files, const std::string& path, const TechnologySettings& settings,
               const cdx::TagDefinition& tag) {
    auto table = OpenAlone(files, path, settings);
    const DbfTable::Content content = table->content();
    auto tags = DefinitionsOf(files, content);
    std::erase_if(tags,
                  [&](const cdx::TagDefinition& other) { return files::SameName(other.name, tag.name); });
    tags.push_back(tag);
    FileSwap swap(files, content.paths.table);
    BuildIndex(files, content, content.records, tags, swap);
    const auto flags = static_cast<std::byte>(content.header.tableFlags | kProductionIndex);
    const std::string tablePath = content.paths.table;
    table.reset();
    swap.Commit();
    // Announced only now: a table without an index is better than one with half an index.
    const auto file = files.Open(tablePath, {files::Access::ReadWrite, files::Creation::OpenExisting, false});
    file->WriteAt(header::kTableFlags, std::array{flags});
}

}  // namespace zu::dbf::maintenance
