#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/locking/LockScheme.h"
#include "host/technologies/dbf/transaction/Journal.h"
#include "host/technologies/dbf/transaction/TableParts.h"
#include "host/technologies/dbf/write/MemoUpdater.h"
#include "host/technologies/dbf/write/WriteSettings.h"
#include "portable/files/File.h"

namespace zu::dbf::write {

/// Where the files of a table are.
struct TablePaths {
    std::string table;
    std::optional<std::string> memo;
    std::optional<std::string> index;

    /// The rollback journal beside the table.
    std::string journal() const;
};

/// The files of a table, open for writing, with the journal that keeps them together.
class WriteFiles {
public:
    /// Opens the files; errors are those of the file system (AccessDenied for a table that may only be read).
    WriteFiles(files::FileSystem& system, const TablePaths& paths, const DbfHeader& header,
               const WriteSettings& settings);

    transaction::PartFiles parts() const noexcept;
    files::File& table() noexcept { return *table_; }
    files::File* memo() noexcept { return memo_.get(); }
    files::File* index() noexcept { return index_.get(); }
    transaction::Journal& journal() noexcept { return journal_; }
    const WriteSettings& settings() const noexcept { return settings_; }
    const locking::LockedTable& lockedTable() const noexcept { return lockedTable_; }

    /// Passes the gate, waiting as long as the settings say, and undoes what a process that died has left
    /// half-done. Locked when the wait is over.
    transaction::Journal::Recovery Enter();
    void Leave() noexcept { journal_.Leave(); }

private:
    WriteSettings settings_;
    locking::LockedTable lockedTable_;
    std::unique_ptr<files::File> table_;
    std::unique_ptr<files::File> memo_;
    std::unique_ptr<files::File> index_;
    transaction::Journal journal_;
};

/// Undoes what a process that died while it wrote to the table has left half-done, before the table is read.
/// Does nothing when there is no journal, or when it belongs to a process that is at work. Errors when
/// something must be undone and cannot be.
transaction::Journal::Recovery RecoverTable(files::FileSystem& system, const TablePaths& paths);

}  // namespace zu::dbf::write
