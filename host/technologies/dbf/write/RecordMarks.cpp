#include "host/technologies/dbf/write/RecordMarks.h"

#include <array>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/transaction/StretchReader.h"
#include "host/technologies/dbf/write/AppendBatch.h"
#include "portable/error/Error.h"

namespace zu::dbf::write {

bool RecordMarks::MarkBlock(std::span<const std::uint32_t> records, technologies::MarkOutcome& outcome) {
    Change change(table_.files);
    TakeOver(change, table_);
    if (!change.TryLockTable()) return false;
    std::uint32_t changed = 0;
    try {
        LockIndex(change);
        changed = Collect(change, records);
        change.Commit();
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::Locked) throw;
        return false;
    }
    if (table_.indexes != nullptr) table_.indexes->TakeOwnChange();
    for (const std::uint32_t record : records)
        table_.records.Forget(record);
    outcome.handled += records.size();
    outcome.changed += changed;
    return true;
}

void RecordMarks::LockIndex(Change& change) {
    if (table_.indexes == nullptr) return;
    change.LockIndex();
    // A tag that seemed not to belong to the records is looked at once more while nobody else can write.
    if (!table_.indexes->IsOutdated() && table_.indexes->areUsable()) return;
    table_.records.Refresh();
    table_.indexes->Refresh();
}

// Puts the marks, and the keys that follow from them, into the change; answers how many marks are others than
// before.
std::uint32_t RecordMarks::Collect(Change& change, std::span<const std::uint32_t> records) {
    const auto update = table_.indexes == nullptr
                            ? nullptr
                            : table_.indexes->BeginUpdate(table_.files.settings().staleTags, change.writes());
    const std::array mark{std::byte{deleted_ ? kDeletedMark : kLiveMark}};
    const std::size_t length = table_.header.recordLength;
    const auto place = [&](std::uint32_t record) {
        return table_.header.headerLength + std::uint64_t{record - 1} * length;
    };
    transaction::StretchReader reader(table_.files.table(), table_.files.table().Size());
    std::vector<std::byte> before(length);
    std::vector<std::byte> after;
    std::uint32_t changed = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const std::uint32_t record = records[i];
        const std::uint64_t offset = place(record);
        if (!change.writes().Find(transaction::Part::Table, offset).empty()) continue;  // named twice
        if (offset + length > reader.size())
            throw Error(ErrorKind::NotFound, "The table " + table_.layout.record.tableName +
                                                 " has no record " + std::to_string(record) + " any more.");
        reader.Read(offset, before, i + 1 < records.size() ? place(records[i + 1]) : offset);
        if ((before[0] == std::byte{kDeletedMark}) == deleted_) continue;
        ++changed;
        change.writes().Write(transaction::Part::Table, offset, mark);
        if (!update) continue;
        after = before;
        after[0] = mark[0];
        const expression::Row old{before.data(), record, table_.records.memos()};
        update->Replace(&old, {after.data(), record, table_.records.memos()});
    }
    if (update) update->Finish();
    return changed;
}

}  // namespace zu::dbf::write
