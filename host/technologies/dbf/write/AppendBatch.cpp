#include "host/technologies/dbf/write/AppendBatch.h"

#include <algorithm>
#include <array>
#include <exception>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/write/HeaderDate.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::write {
namespace {

using transaction::Part;

// A run ends after so many records or so much time, whichever comes first: others wait no longer than that.
constexpr std::uint32_t kLongestRun = 32768;
constexpr std::chrono::milliseconds kLongestTime{100};
constexpr std::uint32_t kClockInterval = 64;  // records between two looks at the clock
constexpr std::size_t kBlockBytes = 256U << 10;

// Puts the keys in and counts the records: the one change that ends a run.
void PutIn(Change& change, const EditedTable& table, cdx::NewKeys* keys, std::uint32_t count,
           MemoUpdater* memos) {
    if (keys != nullptr) {
        const auto update = table.indexes->BeginUpdate(table.files.settings().staleTags, change.writes());
        update->Add(*keys);
        update->Finish();
    }
    WriteCount(change, table, count);
    if (memos != nullptr) memos->CountBlocks(change.writes());
    change.Commit();
    if (table.indexes != nullptr) table.indexes->TakeOwnChange();
}

// The keys of the records from `first` to `count`, by tags that are probed against the records before.
std::unique_ptr<cdx::NewKeys> CollectAnew(const EditedTable& table, std::uint32_t first,
                                          std::uint32_t count) {
    table.records.Refresh();
    table.records.LimitTo(first - 1);
    table.indexes->Refresh();
    table.records.Refresh();
    auto keys = table.indexes->CollectKeys();
    for (std::uint32_t number = first; number <= count; ++number)
        keys->Add({table.records.Record(number), number, table.records.memos()});
    return keys;
}

locking::FileLock LockIndex(const EditedTable& table) {
    return locking::FileLock::Take(
        *table.files.index(), {{locking::IndexLock(table.files.settings().scheme), locking::LockRange{}}, 1},
        files::LockMode::Exclusive, table.files.settings().wait,
        "The index file " + table.files.index()->path());
}

}  // namespace

std::uint32_t CountRecords(const EditedTable& table) {
    const files::File& file = table.files.table();
    std::array<std::byte, 4> bytes{};
    file.ReadAt(header::kRecordCount, bytes);
    const auto stated = LoadLittle<std::uint32_t>(bytes.data());
    const std::uint64_t size = file.Size();
    const std::uint64_t whole = size <= table.header.headerLength
                                    ? 0
                                    : (size - table.header.headerLength) / table.header.recordLength;
    if (whole < stated)
        throw Error(ErrorKind::Damaged, "Nothing is added to the table " + table.layout.record.tableName +
                                            ": its header counts " + std::to_string(stated) +
                                            " records, but the file holds only " + std::to_string(whole) +
                                            ". Repair the table first.");
    std::uint32_t count = stated;
    for (; count < whole; ++count) {
        std::array<std::byte, 1> mark{};
        file.ReadAt(table.header.headerLength + std::uint64_t{count} * table.header.recordLength, mark);
        const auto byte = std::to_integer<std::uint8_t>(mark[0]);
        if (byte != kLiveMark && byte != kDeletedMark) break;
    }
    return count;
}

void WriteCount(Change& change, const EditedTable& table, std::uint32_t count) {
    std::array<std::byte, 7> bytes{};
    const auto date = HeaderDate(table.header.version, Today());
    std::copy(date.begin(), date.end(), bytes.begin());
    StoreLittle(bytes.data() + 3, count);
    change.writes().Write(Part::Table, header::kYear, bytes);
}

MemoFormat MemoFormatInUse(const EditedTable& table) {
    if (table.header.version.memo != MemoFormat::None) return table.header.version.memo;
    // Versions without a memo file of their own take the one that lies there, by its extension.
    return files::SameName(files::Extension(table.files.memo()->path()), ".fpt") ? MemoFormat::Fpt
                                                                                 : MemoFormat::Dbt3;
}

void CompleteRecords(Change& change, const EditedTable& table, std::uint32_t from) {
    const auto header = locking::FileLock::Take(
        table.files.table(), locking::HeaderLock(table.files.settings().scheme, table.files.lockedTable()),
        files::LockMode::Exclusive, table.files.settings().wait,
        "The header of " + table.files.table().path());
    const std::uint32_t count = CountRecords(table);
    std::unique_ptr<cdx::NewKeys> keys;
    locking::FileLock index;
    if (table.indexes != nullptr && from >= 1 && from <= count) {
        index = LockIndex(table);
        keys = CollectAnew(table, from, count);
    }
    const auto memos = table.files.memo() == nullptr
                           ? nullptr
                           : MemoUpdater::Open(*table.files.memo(), MemoFormatInUse(table));
    PutIn(change, table, keys.get(), count, memos.get());
    table.records.Refresh();
    if (table.indexes != nullptr) table.indexes->Refresh();
}

void TakeOver(Change& change, const EditedTable& table) {
    if (const auto from = change.keysMissingFrom())
        CompleteRecords(change, table, *from);
    else if (change.undoneOther())
        table.records.Refresh();
}

AppendBatch::~AppendBatch() {
    try {
        EndRun();
    } catch (...) {
        // The journal says from which record on keys are missing; the next one who comes puts them in.
        static_cast<void>(std::current_exception());
    }
}

void AppendBatch::Begin() noexcept {
    if (depth_++ > 0) return;
    failure_ = nullptr;
    lost_ = 0;
}

void AppendBatch::End() {
    if (--depth_ > 0) return;
    EndRun();
    RequireSound();
}

void AppendBatch::RequireSound() {
    if (!failure_) return;
    EndRun();  // a batch that takes no more keeps nobody else out
    std::rethrow_exception(failure_);
}

std::uint64_t AppendBatch::OffsetOf(std::uint32_t number) const noexcept {
    return table_.header.headerLength + std::uint64_t{number - 1} * table_.header.recordLength;
}

void AppendBatch::BeginRun() {
    auto change = std::make_unique<Change>(table_.files);
    TakeOver(*change, table_);
    change->LockHeader();
    if (table_.files.memo() != nullptr) change->LockMemo();
    const std::uint32_t count = CountRecords(table_);
    if (table_.indexes != nullptr) {
        // Records that came without keys show in the probe.
        if (table_.indexes->IsOutdated() || count != table_.records.known() || !table_.indexes->areUsable()) {
            table_.records.Refresh();
            table_.records.TakeForeignRecords();
            table_.indexes->Refresh();
        }
        table_.indexes->RequireUpdatable(table_.files.settings().staleTags);
        keys_ = table_.indexes->CollectKeys();
    }
    change->BeginRecordsWithoutKeys(count + 1);
    first_ = count + 1;
    written_ = count;
    count_ = count;
    begun_ = std::chrono::steady_clock::now();
    change_ = std::move(change);
}

bool AppendBatch::isRunOver() const {
    const std::uint32_t added = count_ + 1 - first_;
    if (added >= kLongestRun) return true;
    return added % kClockInterval == kClockInterval - 1 &&
           std::chrono::steady_clock::now() - begun_ > kLongestTime;
}

Change& AppendBatch::Next(std::uint32_t& number) {
    if (change_ && isRunOver())
        EndRun();
    else if (block_.size() + table_.header.recordLength + memos_.size() > kBlockBytes)
        WriteOut();
    RequireSound();
    if (!change_) BeginRun();
    header_.Clear();
    number = count_ + 1;
    return *change_;
}

void AppendBatch::Append(std::span<const std::byte> record) {
    for (const auto& range : header_.ranges(Part::Table))
        table_.files.table().WriteAt(range.offset, header_.data(range));
    if (block_.capacity() == 0) block_.reserve(std::max<std::size_t>(kBlockBytes, record.size()) + 1);
    block_.insert(block_.end(), record.begin(), record.end());
    ++count_;
    Announce();
}

MemoUpdater& AppendBatch::memoUpdater() {
    if (!memoUpdater_) memoUpdater_ = MemoUpdater::Open(*table_.files.memo(), MemoFormatInUse(table_));
    return *memoUpdater_;
}

void AppendBatch::WriteOut() noexcept {
    Withdraw();
    if (block_.empty()) return;
    try {
        WriteRecords();
    } catch (...) {
        failure_ = std::current_exception();
    }
    block_.clear();
    memos_.Clear();
}

// One memo lies behind the other, in the set as in the file. The count of blocks is written at the end of the
// run; until then the size of the file says it.
void AppendBatch::WriteMemos() {
    constexpr std::uint64_t kCountOffset = 0;
    const auto& ranges = memos_.ranges(Part::Memo);
    for (auto range = ranges.begin(); range != ranges.end();) {
        auto whole = *range++;
        if (whole.offset == kCountOffset) continue;
        for (; range != ranges.end() && range->offset == whole.offset + whole.length &&
               range->position == whole.position + whole.length;
             ++range)
            whole.length += range->length;
        table_.files.memo()->WriteAt(whole.offset, memos_.data(whole));
    }
}

void AppendBatch::WriteRecords() {
    try {
        WriteMemos();
        block_.push_back(std::byte{kEndOfFile});
        table_.files.table().WriteAt(OffsetOf(written_ + 1), block_);
    } catch (...) {
        Drop();
        throw;
    }
    CollectKeys();
    written_ = count_;
    table_.records.NoteOwnRecords(count_);
}

void AppendBatch::CollectKeys() {
    if (!keys_) return;
    try {
        const std::byte* record = block_.data();
        for (std::uint32_t number = written_ + 1; number <= count_; ++number) {
            keys_->Add({record, number, table_.records.memos()});
            record += table_.header.recordLength;
        }
    } catch (...) {
        keys_.reset();  // the end of the run collects them anew, or fails as well
    }
}

// Part of the block may have come into the file: nothing of it is to count.
void AppendBatch::Drop() noexcept {
    lost_ += count_ - written_;
    count_ = written_;
    try {
        // Looks anew where the memo file ends.
        if (memoUpdater_) memoUpdater_ = MemoUpdater::Open(*table_.files.memo(), MemoFormatInUse(table_));
        files::File& file = table_.files.table();
        const std::uint64_t end = OffsetOf(written_ + 1);
        if (file.Size() <= end) return;
        const std::array<std::byte, 1> mark{std::byte{kEndOfFile}};
        file.WriteAt(end, mark);
        file.Truncate(end + mark.size());  // fails where somebody has the file mapped; the mark is enough
    } catch (...) {
        static_cast<void>(std::current_exception());
    }
}

void AppendBatch::EndRun() {
    if (!change_) return;
    WriteOut();
    // Whatever happens, the locks go: what is left to do stands in the journal.
    const std::unique_ptr<Change> change = std::move(change_);
    const std::unique_ptr<cdx::NewKeys> keys = std::move(keys_);
    const std::unique_ptr<MemoUpdater> memos = std::move(memoUpdater_);
    if (table_.indexes == nullptr) {
        PutIn(*change, table_, nullptr, count_, memos.get());
        return;
    }
    const locking::FileLock index = LockIndex(table_);
    if (keys && !table_.indexes->IsOutdated()) {
        PutIn(*change, table_, keys.get(), count_, memos.get());
        return;
    }
    const auto anew = CollectAnew(table_, first_, count_);
    PutIn(*change, table_, anew.get(), count_, memos.get());
}

}  // namespace zu::dbf::write
