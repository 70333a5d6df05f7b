#include "host/technologies/dbf/write/WriteFiles.h"

#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/locking/FileLock.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf::write {
namespace {

constexpr files::OpenOptions kForWriting{files::Access::ReadWrite, files::Creation::OpenExisting, false};

std::unique_ptr<files::File> OpenPart(files::FileSystem& system, const std::optional<std::string>& path) {
    return path ? system.Open(*path, kForWriting) : nullptr;
}

}  // namespace

std::string TablePaths::journal() const {
    return files::WithExtension(table, ".zuj");
}

WriteFiles::WriteFiles(files::FileSystem& system, const TablePaths& paths, const DbfHeader& header,
                       const WriteSettings& settings)
    : settings_(settings),
      lockedTable_{header.versionByte, paths.index.has_value(), header.headerLength, header.recordLength},
      table_(system.Open(paths.table, kForWriting)),
      memo_(OpenPart(system, paths.memo)),
      index_(OpenPart(system, paths.index)),
      journal_(system, paths.journal(), *table_, settings.durability) {
    journal_.MarkIn(index_.get());
}

transaction::PartFiles WriteFiles::parts() const noexcept {
    transaction::PartFiles parts;
    parts[transaction::Part::Table] = table_.get();
    parts[transaction::Part::Memo] = memo_.get();
    parts[transaction::Part::Index] = index_.get();
    return parts;
}

transaction::Journal::Recovery WriteFiles::Enter() {
    if (!locking::RetryUntil(settings_.wait, [this] { return journal_.TryEnter(); }))
        throw Error(ErrorKind::Locked,
                    "The table " + table_->path() + " is being changed by another process; it was " +
                        "not free within " + std::to_string(settings_.wait.count()) + " milliseconds.");
    try {
        return journal_.Recover(parts());
    } catch (...) {
        journal_.Leave();
        throw;
    }
}

transaction::Journal::Recovery RecoverTable(files::FileSystem& system, const TablePaths& paths) {
    if (!transaction::Journal::MayHoldChange(system, paths.journal())) return {};
    const auto table = system.Open(paths.table, kForWriting);
    const auto memo = OpenPart(system, paths.memo);
    const auto index = OpenPart(system, paths.index);
    transaction::PartFiles parts;
    parts[transaction::Part::Table] = table.get();
    parts[transaction::Part::Memo] = memo.get();
    parts[transaction::Part::Index] = index.get();
    // The process that has left the journal is gone, so it matters little how much is made sure: putting the
    // old bytes back can be done again.
    transaction::Journal journal(system, paths.journal(), *table, transaction::Durability::PowerCut);
    journal.MarkIn(index.get());
    if (!journal.TryEnter()) return {};
    return journal.Recover(parts);
}

}  // namespace zu::dbf::write
