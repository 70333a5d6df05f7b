#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "host/technologies/Table.h"
#include "host/technologies/dbf/write/Change.h"
#include "host/technologies/dbf/write/EditedTable.h"

namespace zu::dbf::write {

/// Marks many records as deleted, or takes their marks off, as one change: one lock for all, one note in the
/// journal.
class RecordMarks {
public:
    /// Others wait for a whole block, some hundredths of a second.
    static constexpr std::size_t kLongestBlock = 4096;
    /// For fewer records the lock on all would keep out more than it saves.
    static constexpr std::size_t kShortestBlock = 5;

    /// Everything in `table` must outlive the object.
    RecordMarks(const EditedTable& table, bool deleted) noexcept : table_(table), deleted_(deleted) {}

    /// False, and nothing was done, when another program holds one of the records, and when the block fails
    /// for any reason: marked one by one, each record fares as it would alone. Locked when the table or its
    /// index is not free in time.
    bool MarkBlock(std::span<const std::uint32_t> records, technologies::MarkOutcome& outcome);

private:
    void LockIndex(Change& change);
    std::uint32_t Collect(Change& change, std::span<const std::uint32_t> records);

    EditedTable table_;
    bool deleted_;
};

}  // namespace zu::dbf::write
