#include "host/technologies/dbf/maintenance/TableCopy.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "host/technologies/dbf/BlockStream.h"
#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/write/HeaderDate.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::maintenance {
namespace {

constexpr files::OpenOptions kNewFile{files::Access::ReadWrite, files::Creation::CreateAlways, true};
constexpr std::uint32_t kNamedMemos = 20;  // more sentences help nobody

void SetFlag(std::byte& flags, std::uint8_t flag, bool value) {
    flags = value ? flags | std::byte{flag} : flags & ~std::byte{flag};
}

// The format of a memo file that lies beside a table, or would.
MemoFormat FormatBeside(const DbfHeader& header, const std::string& path) {
    if (header.version.memo != MemoFormat::None) return header.version.memo;
    return files::SameName(files::Extension(path), ".fpt") ? MemoFormat::Fpt : MemoFormat::Dbt3;
}

}  // namespace

bool IsMemo(FieldKind kind) noexcept {
    return kind == FieldKind::MemoText || kind == FieldKind::MemoBinary;
}

std::vector<std::byte> TableCopy::MakeHead(Kept kept) const {
    std::vector<std::byte> head = content_.records.HeaderBytes();
    const auto date = write::HeaderDate(content_.header.version, write::Today());
    std::copy(date.begin(), date.end(), head.begin() + header::kYear);
    if (kept == Kept::None) RestartNumbers(head);
    if (announcesIndex_) SetFlag(head[header::kTableFlags], kProductionIndex, *announcesIndex_);
    if (report_ != nullptr && content_.header.version.visualFoxPro)
        SetFlag(head[header::kTableFlags], kHasMemo, content_.layout.hasMemos());
    return head;
}

std::uint32_t TableCopy::Write(Kept kept) {
    path_ = swap_.Prepare(content_.paths.table);
    BeginMemos();
    BlockStream stream(files_.Open(path_, kNewFile));
    stream.Append(MakeHead(kept));
    std::uint32_t count = 0;
    std::vector<std::byte> record(content_.header.recordLength);
    const std::uint32_t records = kept == Kept::None ? 0 : content_.records.Count();
    for (std::uint32_t number = 1; number <= records; ++number) {
        meter_.Step();
        const std::byte* bytes = content_.records.Record(number);
        if (kept == Kept::Live && *bytes == std::byte{kDeletedMark}) continue;
        if (!memos_ && report_ == nullptr) {
            stream.Append({bytes, record.size()});
            ++count;
            continue;
        }
        std::memcpy(record.data(), bytes, record.size());
        if (report_ != nullptr && record[0] != std::byte{kDeletedMark} && record[0] != std::byte{kLiveMark}) {
            record[0] = std::byte{kLiveMark};
            ++mendedMarks_;
        }
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
    Report();
    return count;
}

void TableCopy::BeginMemos() {
    std::string path;
    if (content_.paths.memo) {
        path = *content_.paths.memo;
    } else if (report_ != nullptr && content_.layout.hasMemos() &&
               content_.header.version.memo != MemoFormat::Smt) {
        const bool fpt = content_.header.version.memo == MemoFormat::Fpt;
        path = files::WithExtension(content_.paths.table, fpt ? ".fpt" : ".dbt");
    } else {
        return;
    }
    memos_ =
        MemoWriter::Make(files_.Open(swap_.Prepare(path), kNewFile), FormatBeside(content_.header, path));
}

// A memo that cannot be read is left out when the table is mended, and ends the work otherwise.
void TableCopy::MendUnreadable(std::uint32_t number, std::size_t field, std::byte* record) {
    const std::string& name = content_.layout.record.fields[field].name;
    if (report_ == nullptr)
        throw Error(ErrorKind::Damaged,
                    "The memo " + name + " of record " + std::to_string(number) + " of the table " +
                        content_.layout.record.tableName +
                        " cannot be read; packing would lose it. Repair the table first.");
    if (++lostMemos_ <= kNamedMemos)
        report_->push_back("Record " + std::to_string(number) + ": the memo " + name +
                           " could not be read and is empty now.");
    encoder_.SetMemoBlock(record, field, 0);
}

void TableCopy::MoveMemos(std::uint32_t number, std::byte* record) {
    for (std::size_t field = 0; field < content_.layout.kinds.size(); ++field) {
        if (!IsMemo(content_.layout.kinds[field])) continue;
        const auto outcome = content_.memos->Fetch(field, record, memo_);
        if (outcome == MemoOutcome::Unreadable) {
            MendUnreadable(number, field, record);
            continue;
        }
        const bool isText = content_.layout.kinds[field] == FieldKind::MemoText;
        const auto bit = content_.layout.record.fields[field].nullBit;
        if (bit >= 0 && outcome == MemoOutcome::None) continue;
        encoder_.SetMemoBlock(record, field, memo_.empty() ? 0 : memos_->Append(memo_, isText));
    }
}

void TableCopy::RestartNumbers(std::vector<std::byte>& head) const {
    for (std::size_t i = 0; i < content_.header.fields.size(); ++i) {
        if ((content_.header.fields[i].flags & kAutoIncrement) != kAutoIncrement) continue;
        const std::size_t at = header::kSize + i * descriptor::kSize + descriptor::kNextNumber;
        if (at + 4 <= head.size()) StoreLittle<std::uint32_t>(head.data() + at, 1);
    }
}

void TableCopy::Report() const {
    if (report_ == nullptr) return;
    if (lostMemos_ > kNamedMemos)
        report_->push_back(std::to_string(lostMemos_ - kNamedMemos) +
                           " more memos could not be read and are empty now.");
    if (mendedMarks_ > 0)
        report_->push_back(std::to_string(mendedMarks_) +
                           " records had no valid deletion mark; they are kept and not deleted.");
}

}  // namespace zu::dbf::maintenance
