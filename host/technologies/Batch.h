#pragma once

namespace zu::technologies {

/// Holds as long as many records are added to one table. Each of them is as safe as without it once it is
/// saved, but work on indexes may be gathered; others find the records at the latest when the batch ends.
///
/// A batch must not outlive its table. When the object goes without Finish, the same is done and errors are
/// left for the next one who changes the table.
class Batch {
public:
    Batch() = default;
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    virtual ~Batch() = default;

    /// Ends the batch. Errors are those of RecordEdit::Save; the records that were saved stay.
    virtual void Finish() {}
};

}  // namespace zu::technologies
