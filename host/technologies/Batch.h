#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "portable/textio/Cell.h"
#include "portable/textio/StoredField.h"

namespace zu::technologies {

/// Holds as long as many records are added to one table. Records that are saved meanwhile may be held back in
/// memory, and work on indexes may be gathered. Whoever reads a table in the same thread finds them; they are
/// safe against the end of the process, and others find them, by and by and at the latest when the batch
/// ends.
///
/// A batch must not outlive its table. When the object goes without Finish, the same is done and errors are
/// left for the next one who changes the table.
class Batch {
public:
    Batch() = default;
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    virtual ~Batch() = default;

    /// Adds a live record whose field `places[i]` holds `cells[i]`, as if each had been put into an edit, and
    /// answers its number. 0, and nothing was done: the cells are not plain enough, use an edit. `codePage`
    /// is the page of the cells' bytes. Errors are those of RecordEdit::Save.
    virtual std::uint32_t AddRow(std::span<const textio::Cell> /*cells*/,
                                 std::span<const std::size_t> /*places*/, unsigned /*codePage*/) {
        return 0;
    }
    /// What AddStored is given from now on: records with these fields, texts in the table's page, whose
    /// values go into the fields `places`. False: they must come as cells.
    virtual bool MatchStored(std::span<const textio::StoredField> /*stored*/,
                             std::span<const std::size_t> /*places*/) {
        return false;
    }
    /// Adds the values of such a record, as AddRow does.
    virtual std::uint32_t AddStored(const char* /*record*/) { return 0; }
    /// The code page of the table's texts; 0 when there is none.
    virtual unsigned codePage() const noexcept { return 0; }
    /// Ends the batch. Errors are those of RecordEdit::Save; what is in the table then stays.
    virtual void Finish() {}
    /// Records that were saved last and then could not be written; nothing of them is in the table. Known
    /// when the batch has ended.
    virtual std::uint32_t lost() const noexcept { return 0; }
};

}  // namespace zu::technologies
