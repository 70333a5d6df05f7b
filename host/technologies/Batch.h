#pragma once

#include <cstdint>

namespace zu::technologies {

/// Holds as long as many records are added to one table. Records that are saved meanwhile may be held back in
/// memory, and work on indexes may be gathered. Whoever reads a table in the same thread finds them; they are
/// safe against the end of the process, and others find them, by and by and at the latest when the batch ends.
///
/// A batch must not outlive its table. When the object goes without Finish, the same is done and errors are
/// left for the next one who changes the table.
class Batch {
public:
    Batch() = default;
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    virtual ~Batch() = default;

    /// Ends the batch. Errors are those of RecordEdit::Save; what is in the table then stays.
    virtual void Finish() {}
    /// Records that were saved last and then could not be written; nothing of them is in the table. Known when
    /// the batch has ended.
    virtual std::uint32_t lost() const noexcept { return 0; }
};

}  // namespace zu::technologies
