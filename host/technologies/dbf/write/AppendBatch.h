#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/technologies/dbf/cdx/NewKeys.h"
#include "host/technologies/dbf/write/Change.h"
#include "host/technologies/dbf/write/EditedTable.h"
#include "host/technologies/dbf/write/MemoUpdater.h"

namespace zu::dbf::write {

/// Adds many records one after the other.
///
/// Each record is in the file when Append returns, so it outlives the process. Its keys are gathered and put
/// in run by run. A run begins with a note in the journal that says from which record on keys are missing: if
/// the process dies, the next one that opens or changes the table puts them in (CompleteRecords). Between two
/// runs the gate and all locks are let go, so that other processes get on.
class AppendBatch {
public:
    /// Everything in `table` must outlive the object.
    explicit AppendBatch(const EditedTable& table) : table_(table) {}
    ~AppendBatch();
    AppendBatch(const AppendBatch&) = delete;
    AppendBatch& operator=(const AppendBatch&) = delete;

    /// Begin and End come in pairs, which may lie inside each other.
    void Begin() noexcept { ++depth_; }
    void End();
    bool isOpen() const noexcept { return depth_ > 0; }

    /// The change that the next record belongs to, with the header locked, and the number that the record
    /// will have. Errors are those of a Change, and those of ending the run before.
    Change& Next(std::uint32_t& number);
    /// Adds the record that Next was called for; `writes` holds what it needs besides (memos, drawn numbers).
    void Append(const std::vector<std::byte>& record, const transaction::ChangeSet& writes);
    /// Puts in the keys of all records so far and lets the table go.
    void EndRun();

private:
    void BeginRun();
    std::uint64_t OffsetOf(std::uint32_t number) const noexcept;
    bool isRunOver() const;

    EditedTable table_;
    int depth_ = 0;
    std::unique_ptr<Change> change_;
    std::unique_ptr<cdx::NewKeys> keys_;
    std::vector<std::byte> written_;  ///< a record and the end mark behind it
    std::uint32_t first_ = 0;         ///< number of the first record of the run
    std::uint32_t count_ = 0;         ///< records in the table
    bool hasMemos_ = false;           ///< the run has written memos
    std::chrono::steady_clock::time_point begun_;
};

/// The gate is held by `change`: gives keys to all records from `from` on that a process that died has added
/// without them, and lets header and memo file count them.
void CompleteRecords(Change& change, const EditedTable& table, std::uint32_t from);

/// Brings what is known of the table up to date after the gate was passed: completes the records of another
/// process, or reads anew what it had half changed.
void TakeOver(Change& change, const EditedTable& table);

/// How many records a table has by what lies in the file. Damaged when it holds less than its header says.
std::uint32_t CountRecords(const EditedTable& table);

/// The date of today and the count of records, as they lie side by side in the header.
void WriteCount(Change& change, const EditedTable& table, std::uint32_t count);

/// The format of the memo file that lies beside the table.
MemoFormat MemoFormatInUse(const EditedTable& table);

}  // namespace zu::dbf::write
