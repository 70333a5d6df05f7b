#include "host/technologies/dbf/write/DbfRecordEdit.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <memory>
#include <utility>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/write/AppendBatch.h"
#include "portable/error/Error.h"

namespace zu::dbf::write {
namespace {

using technologies::Value;

bool IsMemo(FieldKind kind) {
    return kind == FieldKind::MemoText || kind == FieldKind::MemoBinary;
}

bool Bit(const std::byte* flags, std::int32_t bit) {
    return bit >= 0 && (flags[bit / 8] & std::byte{1} << (bit % 8)) != std::byte{0};
}

void SetBit(std::byte* flags, std::int32_t bit, bool value) {
    if (bit < 0) return;
    const std::byte mask = std::byte{1} << (bit % 8);
    flags[bit / 8] = value ? flags[bit / 8] | mask : flags[bit / 8] & ~mask;
}

}  // namespace

DbfRecordEdit::DbfRecordEdit(const EditedTable& table)
    : table_(table),
      encoder_(table.layout),
      original_(table.layout.record.recordLength),
      changed_(table.layout.kinds.size()) {
    encoder_.fields().Blank(original_.data());
    current_ = original_;
}

DbfRecordEdit::DbfRecordEdit(const EditedTable& table, std::uint32_t number, const std::byte* bytes)
    : table_(table),
      encoder_(table.layout),
      number_(number),
      original_(bytes, bytes + table.layout.record.recordLength),
      current_(original_),
      changed_(table.layout.kinds.size()) {}

void DbfRecordEdit::RequireField(std::size_t field) const {
    if (field < table_.layout.kinds.size()) return;
    throw Error(ErrorKind::NotFound, "The table " + table_.layout.record.tableName + " has no field number " +
                                         std::to_string(field) + ".");
}

void DbfRecordEdit::Set(std::size_t field, const Value& value) {
    RequireField(field);
    const auto& description = table_.layout.descriptions[field];
    if (description.readOnly &&
        !(IsMemo(table_.layout.kinds[field]) || table_.layout.kinds[field] == FieldKind::Varbinary))
        throw Error(ErrorKind::AccessDenied, "The field " + description.name + " of the table " +
                                                 table_.layout.record.tableName + " cannot be changed.");
    if (!IsMemo(table_.layout.kinds[field])) {
        std::vector<std::byte> record = current_;
        encoder_.Set(record.data(), field, value);
        current_.swap(record);
    } else {
        std::string content = encoder_.MemoContent(field, value);
        if (table_.files.memo() == nullptr)
            throw Error(ErrorKind::NotFound, "The memo file of the table " + table_.layout.record.tableName +
                                                 " is missing; its field " + description.name +
                                                 " cannot be changed.");
        PendingMemo& memo = memos_[field];
        if (!changed_[field] && number_ != 0 && table_.memos != nullptr)
            table_.memos->Fetch(field, original_.data(), memo.before);
        memo.content = std::move(content);
        SetBit(current_.data() + table_.layout.record.nullFlagsOffset,
               table_.layout.record.fields[field].nullBit, value.kind == Value::Kind::Null);
    }
    changed_[field] = true;
}

void DbfRecordEdit::Get(std::size_t field, Value& out) {
    RequireField(field);
    const auto memo = memos_.find(field);
    const bool isNull = Bit(current_.data() + table_.layout.record.nullFlagsOffset,
                            table_.layout.record.fields[field].nullBit);
    if (memo == memos_.end() || isNull) {
        FieldReader(table_.layout, table_.memos, table_.blankNumbersAreNull)
            .Read(current_.data(), field, out);
        return;
    }
    const std::string& content = memo->second.content;
    if (table_.layout.kinds[field] == FieldKind::MemoBinary) {
        out.kind = Value::Kind::Binary;
        out.binary.assign(content.begin(), content.end());
    } else {
        out.kind = Value::Kind::Text;
        out.text.clear();
        table_.layout.record.codePage->Decode(content, out.text);
    }
}

bool DbfRecordEdit::isDeleted() const noexcept {
    return current_[0] == std::byte{kDeletedMark};
}

void DbfRecordEdit::SetDeleted(bool deleted) {
    if (deleted == isDeleted()) return;
    current_[0] = std::byte{deleted ? kDeletedMark : kLiveMark};
    markChanged_ = true;
}

bool DbfRecordEdit::isChanged() const noexcept {
    return number_ == 0 || markChanged_ ||
           std::find(changed_.begin(), changed_.end(), true) != changed_.end();
}

bool DbfRecordEdit::Save() {
    if (!table_.header.isConsistent)
        throw Error(ErrorKind::Damaged, "Nothing is written to the table " + table_.layout.record.tableName +
                                            ": its fields and its record length contradict each other.");
    if (number_ != 0) return !isChanged() || SaveChanged();
    SaveNew();
    return true;
}

std::uint64_t DbfRecordEdit::OffsetOf(std::uint32_t number) const noexcept {
    return table_.header.headerLength + std::uint64_t{number - 1} * table_.header.recordLength;
}

void DbfRecordEdit::CopyField(std::size_t field, const std::byte* from, std::byte* to) const {
    const auto& layout = table_.layout.record.fields[field];
    std::memcpy(to + layout.offset, from + layout.offset, layout.width);
    const std::byte* fromFlags = from + table_.layout.record.nullFlagsOffset;
    std::byte* toFlags = to + table_.layout.record.nullFlagsOffset;
    SetBit(toFlags, layout.nullBit, Bit(fromFlags, layout.nullBit));
    SetBit(toFlags, layout.lengthBit, Bit(fromFlags, layout.lengthBit));
}

bool DbfRecordEdit::ChangedByOther(std::size_t field, const std::byte* now) {
    const auto& layout = table_.layout.record.fields[field];
    const std::uint32_t flags = table_.layout.record.nullFlagsOffset;
    if (std::memcmp(now + layout.offset, original_.data() + layout.offset, layout.width) != 0 ||
        Bit(now + flags, layout.nullBit) != Bit(original_.data() + flags, layout.nullBit))
        return true;
    // The content may be another one in the same place.
    const auto memo = memos_.find(field);
    if (memo == memos_.end() || table_.memos == nullptr) return false;
    std::string content;
    table_.memos->Fetch(field, now, content);
    return content != memo->second.before;
}

bool DbfRecordEdit::SaveChanged() {
    if (table_.batch != nullptr) table_.batch->EndRun();
    Change change(table_.files);
    TakeOver(change, table_);
    change.LockRecord(number_);
    std::vector<std::byte> now(table_.header.recordLength);
    if (table_.files.table().ReadAt(OffsetOf(number_), now) != now.size())
        throw Error(ErrorKind::NotFound, "The table " + table_.layout.record.tableName + " has no record " +
                                             std::to_string(number_) + " any more.");
    std::vector<std::byte> merged = now;
    for (std::size_t field = 0; field < changed_.size(); ++field) {
        if (!changed_[field]) continue;
        if (ChangedByOther(field, now.data())) {
            table_.records.Forget(number_);  // what stands there now must show
            return false;
        }
        CopyField(field, current_.data(), merged.data());
    }
    if (markChanged_) {
        if (now[0] != original_[0]) return false;
        merged[0] = current_[0];
    }
    if (!memos_.empty()) StoreMemos(change, merged.data());
    UpdateIndex(change, now.data(), merged.data(), number_);
    change.writes().Write(transaction::Part::Table, OffsetOf(number_), merged);
    change.Commit();
    if (table_.indexes) table_.indexes->TakeOwnChange();
    Settle(number_, std::move(merged));
    return true;
}

void DbfRecordEdit::SaveNew() {
    if (table_.batch != nullptr && table_.batch->isOpen()) {
        SaveInBatch();
        return;
    }
    Change change(table_.files);
    TakeOver(change, table_);
    change.LockHeader();
    const std::uint32_t number = CountRecords(table_) + 1;
    change.LockRecord(number);
    std::vector<std::byte> record = current_;
    DrawNumbers(change.writes(), record.data());
    if (!memos_.empty()) StoreMemos(change, record.data());
    UpdateIndex(change, nullptr, record.data(), number);
    std::vector<std::byte> written = record;
    written.push_back(std::byte{kEndOfFile});
    change.writes().Write(transaction::Part::Table, OffsetOf(number), written);
    WriteCount(change, table_, number);
    change.Commit();
    table_.records.NoteOwnRecords(number);
    if (table_.indexes) table_.indexes->TakeOwnChange();
    Settle(number, std::move(record));
}

void DbfRecordEdit::SaveInBatch() {
    AppendBatch& batch = *table_.batch;
    std::uint32_t number = 0;
    batch.Next(number);
    std::vector<std::byte> record = current_;
    DrawNumbers(batch.header(), record.data());
    if (!memos_.empty()) StoreMemos(batch.memoUpdater(), batch.memos(), record.data());
    batch.Append(record);
    Settle(number, std::move(record));
}

// Numbers of auto-increment fields are drawn from the file under the header lock, never from what was read
// when the table was opened.
void DbfRecordEdit::DrawNumbers(transaction::ChangeSet& writes, std::byte* record) {
    const auto& descriptors = table_.header.fields;
    for (std::size_t i = 0; i < descriptors.size(); ++i) {
        if ((descriptors[i].flags & kAutoIncrement) != kAutoIncrement || descriptors[i].step == 0) continue;
        const std::uint64_t offset =
            header::kSize + i * std::uint64_t{descriptor::kSize} + descriptor::kNextNumber;
        std::array<std::byte, 4> bytes{};
        table_.files.table().ReadAt(offset, bytes);
        std::memcpy(record + descriptors[i].offset, bytes.data(), bytes.size());
        StoreLittle(bytes.data(), LoadLittle<std::uint32_t>(bytes.data()) + descriptors[i].step);
        writes.Write(transaction::Part::Table, offset, bytes);
    }
}

void DbfRecordEdit::StoreMemos(Change& change, std::byte* record) {
    change.LockMemo();
    StoreMemos(*MemoUpdater::Open(*table_.files.memo(), MemoFormatInUse(table_)), change.writes(), record);
}

void DbfRecordEdit::StoreMemos(MemoUpdater& updater, transaction::ChangeSet& writes, std::byte* record) {
    for (const auto& [field, memo] : memos_) {
        const auto& layout = table_.layout.record.fields[field];
        const bool isNull = Bit(current_.data() + table_.layout.record.nullFlagsOffset, layout.nullBit);
        const std::uint32_t old = MemoBlock(record + layout.offset, layout.width).value_or(0);
        const std::uint32_t block =
            memo.content.empty()
                ? 0
                : updater.Store(memo.content,
                                table_.layout.kinds[field] == FieldKind::MemoText ? MemoContent::Text
                                                                                  : MemoContent::Binary,
                                old, writes);
        if (block != old || block == 0) encoder_.fields().SetMemoBlock(record, field, block);
        SetBit(record + table_.layout.record.nullFlagsOffset, layout.nullBit, isNull);
    }
}

void DbfRecordEdit::UpdateIndex(Change& change, const std::byte* before, const std::byte* after,
                                std::uint32_t number) {
    if (table_.indexes == nullptr) return;
    change.LockIndex();
    // Records that came without keys show in the probe.
    const bool foreign = before == nullptr && table_.records.known() != number - 1;
    // A tag that seemed not to belong to the records is looked at once more while nobody else can write.
    if (foreign || table_.indexes->IsOutdated() || !table_.indexes->areUsable()) {
        table_.records.Refresh();
        table_.indexes->Refresh();
    }
    const auto update = table_.indexes->BeginUpdate(table_.files.settings().staleTags, change.writes());
    expression::Row old{before, number, table_.records.memos()};
    const expression::Row row{after, number, table_.records.memos()};
    update->Replace(before ? &old : nullptr, row);
    update->Finish();
}

void DbfRecordEdit::Settle(std::uint32_t number, std::vector<std::byte> bytes) {
    table_.records.Forget(number);
    number_ = number;
    original_ = std::move(bytes);
    current_ = original_;
    changed_.assign(changed_.size(), false);
    markChanged_ = false;
    memos_.clear();
}

}  // namespace zu::dbf::write
