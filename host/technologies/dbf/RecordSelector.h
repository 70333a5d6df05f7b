#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/dbf/RecordFile.h"
#include "host/technologies/dbf/cdx/IndexSet.h"
#include "host/technologies/dbf/locking/FileLock.h"

namespace zu::dbf {

/// Finds the records of one selection, by the cheapest of the ways there are: all records in large runs, the
/// candidates that an index tag leaves, or the walk through an index.
class RecordSelector {
public:
    /// `indexes` may be null. `limit` 0: no limit. Everything handed in must outlive the selector.
    RecordSelector(RecordFile& records, cdx::IndexSet* indexes, bool includeDeleted,
                   std::size_t limit) noexcept
        : records_(records), indexes_(indexes), includeDeleted_(includeDeleted), limit_(limit) {}

    /// The records that meet `condition` (null: all), in record order, or in the order of the tag `index`.
    std::vector<std::uint32_t> Find(const expression::Program* condition, std::optional<std::size_t> index);

    /// `lock` is let go as soon as the index has been read.
    void Hold(locking::FileLock lock) noexcept { lock_ = std::move(lock); }

    /// Takes one record in; to be used with IndexSet::Walk and Seek. False when no more are wanted.
    bool Take(std::uint32_t record, std::vector<std::uint32_t>& found);

private:
    std::vector<std::uint32_t> All();
    std::vector<std::uint32_t> Matching(const expression::Program& condition, std::size_t limit);
    std::vector<std::uint32_t> Scan(const expression::Program& condition, std::size_t limit);
    std::vector<std::uint32_t> ScanInHalves(const expression::Program& condition);
    bool Candidates(const expression::Program& condition, std::vector<std::uint32_t>& candidates);
    std::vector<std::uint32_t> Check(const expression::Program& condition,
                                     const std::vector<std::uint32_t>& candidates, std::size_t limit);
    std::vector<std::uint32_t> Walk(std::size_t index);
    std::vector<std::uint32_t> WalkMatching(const expression::Program& condition, std::size_t index);
    bool IsWanted(const std::byte* record) const noexcept;
    bool IsFull(const std::vector<std::uint32_t>& found) const noexcept {
        return limit_ != 0 && found.size() >= limit_;
    }

    RecordFile& records_;
    cdx::IndexSet* indexes_;
    bool includeDeleted_;
    std::size_t limit_;
    locking::FileLock lock_;
};

}  // namespace zu::dbf
