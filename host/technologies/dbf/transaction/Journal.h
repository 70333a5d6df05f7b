#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/technologies/dbf/transaction/ChangeMark.h"
#include "host/technologies/dbf/transaction/ChangeSet.h"
#include "host/technologies/dbf/transaction/TableParts.h"
#include "portable/files/File.h"

namespace zu::dbf::transaction {

/// Whether a change that was confirmed must survive the end of the process only, or a power cut as well.
enum class Durability { Process, PowerCut };

/// The rollback journal beside a table (NAME.zuj): before bytes of the table's files are overwritten, their
/// old content and the files' old sizes are noted here, so that a change that did not come to its end can be
/// undone by whoever opens the table next.
///
/// The file, all numbers little-endian:
///     0   8  mark "ZUJRNL1" and NUL; anything else (zeros): nothing to undo
///     8   8  length of the body
///    16   8  checksum of the body
///    24      body: for each part of the table that is changed
///              1  part (0 table, 1 memo, 2 index)
///              8  size of the file before the change
///              4  number of ranges, then for each range
///                   8  offset
///                   4  length
///                      the old bytes
/// A body that does not fit its checksum was never finished; nothing was overwritten then.
///
/// While records are added as a batch, the body is another one:
///              1  the number 3
///              4  number of the first record that has no keys in the index yet
/// and a change that puts these keys in is noted behind it in the same form as above. Such records are never
/// undone: the change behind is, and then the keys are put in anew.
///
/// The gate is a byte far behind the end of the table file, locked while a change is under way. Every writer
/// passes it first, so that there is one change at a time and nobody builds on a change that must be undone.
/// A second byte is held in common by all who have the journal open; the last of them removes the file.
class Journal {
public:
    /// The journal at `path` of the table in `table`. Both must outlive it. Nothing is opened or made before
    /// the first change.
    Journal(files::FileSystem& system, std::string path, files::File& table, Durability durability);
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /// From here on readers are shown by a mark in `index` (null: nowhere) that the journal says something.
    void MarkIn(files::File* index) noexcept { mark_.Use(index); }

    /// Takes the gate without waiting; false when another process is changing the table.
    bool TryEnter();
    void Leave() noexcept;

    /// There is a change to undo. Only the holder of the gate can rely on the answer.
    bool IsHot() const;
    /// What Recover has found.
    struct Recovery {
        bool undone = false;  ///< bytes were put back
        /// Records from this one on have no keys yet; the journal goes on saying so until the next Commit.
        std::optional<std::uint32_t> keysMissingFrom;
    };
    /// Undoes the change that the journal holds, if any, and empties it. The caller holds the gate.
    Recovery Recover(const PartFiles& parts);

    /// From here on records from number `from` on are added without keys; the next Commit puts these in.
    void BeginRecordsWithoutKeys(std::uint32_t from);

    /// Makes all writes of `changes`, or none of them: on a failure the old bytes are put back and the error
    /// is thrown on. The caller holds the gate.
    void Commit(const ChangeSet& changes, const PartFiles& parts);

    const std::string& path() const noexcept { return path_; }

    /// There is a journal file at `path` that looks as if it had a change to undo. Nothing is locked or
    /// changed; whether it has is known inside the gate only.
    static bool MayHoldChange(files::FileSystem& system, const std::string& path);

private:
    static bool HasMark(const files::File& file);
    std::optional<std::vector<std::byte>> ReadSection(std::uint64_t offset) const;
    void Restore(std::span<const std::byte> body, const PartFiles& parts);
    void ZeroMark(std::uint64_t offset);
    void Note(const ChangeSet& changes, const PartFiles& parts);
    void Apply(const ChangeSet& changes, const PartFiles& parts) const;
    static void Undo(std::span<const std::byte> body, const PartFiles& parts, const std::string& path);
    void Seal();
    void ForgetChange();
    void Empty();

    void Open();
    void RemoveWhenLast();

    files::FileSystem& system_;
    std::string path_;
    files::File& table_;
    Durability durability_;
    ChangeMark mark_;
    std::unique_ptr<files::File> file_;
    std::vector<std::byte> buffer_;  // header and body of the change under way; kept for its memory
    std::uint64_t start_ = 0;        // where the next change is noted: behind what is said of missing keys
    bool inside_ = false;
};

}  // namespace zu::dbf::transaction
