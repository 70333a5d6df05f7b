#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <span>
#include <vector>

#include "host/technologies/dbf/UnwrittenRecords.h"
#include "host/technologies/dbf/cdx/NewKeys.h"
#include "host/technologies/dbf/write/Change.h"
#include "host/technologies/dbf/write/EditedTable.h"
#include "host/technologies/dbf/write/MemoUpdater.h"

namespace zu::dbf::write {

/// Adds many records one after the other.
///
/// Records are gathered and written in blocks, at the latest when their run ends or somebody of this thread
/// reads a table. Their keys are gathered too and put in run by run. A run begins with a note in the journal
/// that says from which record on keys are missing: if the process dies, the next one that opens or changes
/// the table puts them in (CompleteRecords). Between two runs the gate and all locks are let go, so that
/// other processes get on.
///
/// A block that cannot be written is lost with all its records: from then on the batch takes no more, and the
/// error comes up with the next record and at the end.
class AppendBatch final : private UnwrittenRecords {
public:
    /// Everything in `table` must outlive the object.
    explicit AppendBatch(const EditedTable& table) : table_(table) {}
    ~AppendBatch();
    AppendBatch(const AppendBatch&) = delete;
    AppendBatch& operator=(const AppendBatch&) = delete;

    /// Begin and End come in pairs, which may lie inside each other.
    void Begin() noexcept;
    /// The last End throws the error that has stopped the batch, and those of ending a run.
    void End();
    bool isOpen() const noexcept { return depth_ > 0; }
    /// Records of the batch that were taken and then could not be written.
    std::uint32_t lost() const noexcept { return lost_; }

    /// The change that the next record belongs to, with the header locked, and the number that the record
    /// will have. Errors are those of a Change, those of ending the run before, and what has stopped the
    /// batch.
    Change& Next(std::uint32_t& number);
    /// What the record that Next was called for changes in the header (drawn numbers) is collected here.
    transaction::ChangeSet& header() noexcept { return header_; }
    /// The memos of the record are stored by this updater, as writes of `memos`.
    MemoUpdater& memoUpdater();
    transaction::ChangeSet& memos() noexcept { return memos_; }
    /// Adds the record that Next was called for.
    void Append(std::span<const std::byte> record);
    /// Writes all records so far, puts in their keys and lets the table go.
    void EndRun();

private:
    void BeginRun();
    void WriteOut() noexcept override;
    void WriteMemos();
    void WriteRecords();
    void CollectKeys();
    void Drop() noexcept;
    void RequireSound();
    std::uint64_t OffsetOf(std::uint32_t number) const noexcept;
    bool isRunOver() const;

    EditedTable table_;
    int depth_ = 0;
    std::unique_ptr<Change> change_;
    std::unique_ptr<cdx::NewKeys> keys_;
    transaction::ChangeSet header_;
    transaction::ChangeSet memos_;              ///< memos that are still to be written
    std::unique_ptr<MemoUpdater> memoUpdater_;  ///< of the run, once it has a memo
    std::vector<std::byte> block_;              ///< records that are still to be written
    std::uint32_t first_ = 0;                   ///< number of the first record of the run
    std::uint32_t written_ = 0;                 ///< records in the file
    std::uint32_t count_ = 0;     ///< records in the table with those that are still to be written
    std::exception_ptr failure_;  ///< what has stopped the batch
    std::uint32_t lost_ = 0;
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
