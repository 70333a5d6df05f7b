#include "host/technologies/dbf/TableWriter.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/HeaderWriter.h"
#include "host/technologies/dbf/RecordFile.h"
#include "host/technologies/dbf/cdx/CdxBuilder.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"
#include "portable/text/CodePage.h"

namespace zu::dbf {

namespace {

constexpr files::OpenOptions kNewFile{files::Access::ReadWrite, files::Creation::CreateAlways, true};

calendar::Date Today() {
    const std::chrono::year_month_day today(
        std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));
    return {static_cast<int>(today.year()), static_cast<int>(static_cast<unsigned>(today.month())),
            static_cast<int>(static_cast<unsigned>(today.day()))};
}

const text::CodePage& CodePageFor(std::uint8_t mark) noexcept {
    const auto* set = text::CodePage::FindByDbfMark(mark);
    return set ? *set : text::CodePage::Default();
}

/// Begins the file with its header and answers the layout that readers will find in it.
TableLayout Begin(BlockStream& stream, const std::vector<std::byte>& header, std::uint8_t mark) {
    stream.Append(header);
    stream.Drain();
    const std::string& path = stream.file().path();
    return TableLayout::Make(DbfHeader::Read(stream.file()), CodePageFor(mark),
                             std::string(files::Stem(path)));
}

}  // namespace

TableWriter::TableWriter(files::FileSystem& files, std::string path, Format format, std::uint8_t codePageMark,
                         const std::vector<FieldDefinition>& fields)
    : TableWriter(files, std::move(path), format, codePageMark, fields, Today()) {}

TableWriter::TableWriter(files::FileSystem& files, std::string path, Format format, std::uint8_t codePageMark,
                         const std::vector<FieldDefinition>& fields, const calendar::Date& lastChange)
    : files_(files), path_(std::move(path)), encoder_(layout_) {
    // The header is made before the file, so that a faulty definition leaves an old table alone.
    const std::vector<std::byte> header = MakeHeader(format, codePageMark, fields, lastChange);
    stream_ = std::make_unique<BlockStream>(files_.Open(path_, kNewFile));
    layout_ = Begin(*stream_, header, codePageMark);
    if (layout_.hasMemos()) {
        const MemoFormat memo = MemoFormatOf(format);
        const char* extension = memo == MemoFormat::Fpt ? ".fpt" : ".dbt";
        memos_ = MemoWriter::Make(files_.Open(files::WithExtension(path_, extension), kNewFile), memo);
    }
    blank_.resize(layout_.record.recordLength);
    encoder_.Blank(blank_.data());
    record_ = blank_;
}

void TableWriter::StoreMemo(std::size_t field, std::string_view content, bool isText) {
    const std::uint32_t block = content.empty() || !memos_ ? 0 : memos_->Append(content, isText);
    encoder_.SetMemoBlock(record_.data(), field, block);
}

void TableWriter::SetMemo(std::size_t field, std::u16string_view text) {
    std::size_t bad = 0;
    const auto bytes = layout_.record.codePage->Encode(text, &bad);
    if (!bytes) {
        throw Error(ErrorKind::InvalidArgument, "The character at position " + std::to_string(bad + 1) +
                                                    " of a memo for the table " + path_ +
                                                    " is not in its code page.");
    }
    StoreMemo(field, *bytes, true);
}

void TableWriter::SetMemoBytes(std::size_t field, std::string_view bytes) {
    StoreMemo(field, bytes, false);
}

void TableWriter::Append(bool deleted) {
    if (count_ == std::numeric_limits<std::int32_t>::max()) {
        throw Error(ErrorKind::Overflow, "The table " + path_ + " cannot hold one more record.");
    }
    if (deleted) record_[0] = std::byte{kDeletedMark};
    stream_->Append(record_);
    record_ = blank_;
    ++count_;
}

void TableWriter::Close(const std::vector<cdx::TagDefinition>& tags) {
    if (memos_) memos_->Close();
    memos_.reset();
    stream_->Append(std::array{std::byte{kEndOfFile}});
    stream_->Drain();
    std::array<std::byte, 4> count{};
    StoreLittle(count.data(), count_);
    stream_->file().WriteAt(header::kRecordCount, count);
    stream_.reset();
    if (!tags.empty()) BuildIndex(tags);
}

void TableWriter::BuildIndex(const std::vector<cdx::TagDefinition>& tags) {
    auto file = files_.Open(path_, {});
    const DbfHeader header = DbfHeader::Read(*file);
    RecordFile records(std::move(file), header);
    const auto index = files_.Open(files::WithExtension(path_, ".cdx"), kNewFile);
    cdx::BuildCdx(
        *index, tags,
        cdx::IndexContext{layout_.record, records, layout_.record.tableName, *layout_.record.codePage});

    // Announced only now: a table without an index is better than one with half an index.
    const auto table = files_.Open(path_, {files::Access::ReadWrite});
    const std::array flags = {static_cast<std::byte>(header.tableFlags | kProductionIndex)};
    table->WriteAt(header::kTableFlags, flags);
}

}  // namespace zu::dbf
