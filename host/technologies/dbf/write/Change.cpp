#include "host/technologies/dbf/write/Change.h"

#include <utility>

#include "portable/files/Path.h"

namespace zu::dbf::write {

Change::Change(WriteFiles& files) : files_(files), recovery_(files.Enter()) {}

Change::~Change() {
    while (!locks_.empty())
        locks_.pop_back();
    files_.Leave();
}

void Change::Take(files::File& file, const locking::LockRanges& ranges, const std::string& what) {
    locks_.push_back(locking::FileLock::Take(file, ranges, files::LockMode::Exclusive, files_.settings().wait,
                                             what + " " + file.path()));
}

void Change::LockHeader() {
    Take(files_.table(), locking::HeaderLock(files_.settings().scheme, files_.lockedTable()),
         "The header of");
}

void Change::LockRecord(std::uint32_t number) {
    Take(files_.table(), locking::RecordLock(files_.settings().scheme, files_.lockedTable(), number),
         "Record " + std::to_string(number) + " of");
}

bool Change::TryLockTable() {
    const auto ranges = locking::TableLock(files_.settings().scheme, files_.lockedTable());
    if (files_.table().Size() >= ranges.ranges[0].offset) return false;
    auto lock = locking::FileLock::TryTake(files_.table(), ranges, files::LockMode::Exclusive);
    if (!lock) return false;
    locks_.push_back(std::move(lock));
    return true;
}

void Change::LockMemo() {
    Take(*files_.memo(), locking::MemoLock(files_.settings().scheme), "The memo file");
}

void Change::LockIndex() {
    Take(*files_.index(), {{locking::IndexLock(files_.settings().scheme), locking::LockRange{}}, 1},
         "The index file");
}

void Change::Commit() {
    files_.journal().Commit(writes_, files_.parts());
    writes_.Clear();
}

}  // namespace zu::dbf::write
