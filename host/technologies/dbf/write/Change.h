#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/technologies/dbf/locking/FileLock.h"
#include "host/technologies/dbf/transaction/ChangeSet.h"
#include "host/technologies/dbf/write/WriteFiles.h"

namespace zu::dbf::write {

/// One change of a table from its first lock to its last write.
///
/// The gate is passed first; then locks are taken in one order for everybody: header, records ascending,
/// memo, index. All of them are released when the object goes, whether the change was committed or not.
class Change {
public:
    /// Waits for the gate. Errors: Locked, and those of undoing what another process left half-done.
    explicit Change(WriteFiles& files);
    ~Change();
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

    /// A change of a process that died was undone on the way in: whoever holds copies must read again.
    bool undoneOther() const noexcept { return recovery_.undone; }
    /// A process that died has added records from this one on that have no keys yet. They must be given keys
    /// before anything else is changed; see CompleteRecords.
    std::optional<std::uint32_t> keysMissingFrom() const noexcept { return recovery_.keysMissingFrom; }

    void LockHeader();
    void LockRecord(std::uint32_t number);
    /// Every record and the header at once, without waiting: false when another program has any of them, or
    /// when the table is so long that its own bytes would be locked, which Windows then lets nobody read.
    bool TryLockTable();
    void LockMemo();
    void LockIndex();

    transaction::ChangeSet& writes() noexcept { return writes_; }
    /// Makes all writes or none; further writes are another change under the same locks.
    void Commit();
    /// From here on records from number `from` on are added without keys; the next Commit puts these in.
    void BeginRecordsWithoutKeys(std::uint32_t from) { files_.journal().BeginRecordsWithoutKeys(from); }

private:
    void Take(files::File& file, const locking::LockRanges& ranges, const std::string& what);

    WriteFiles& files_;
    transaction::Journal::Recovery recovery_;
    transaction::ChangeSet writes_;
    std::vector<locking::FileLock> locks_;
};

}  // namespace zu::dbf::write
