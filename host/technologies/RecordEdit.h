#pragma once

#include <cstddef>
#include <cstdint>

#include "host/technologies/Value.h"

namespace zu::technologies {

/// A record that is being changed, apart from its table until it is saved. It must not outlive its table.
class RecordEdit {
public:
    virtual ~RecordEdit() = default;

    /// The one-based number; 0 for a new record that is not saved yet.
    virtual std::uint32_t record() const noexcept = 0;

    /// Gives a field another value. A value that the field cannot hold whole is refused and the edit stays as
    /// it was: TypeMismatch (cannot be converted), Overflow (does not fit), InvalidArgument (characters that
    /// the table's code page lacks), AccessDenied (the table keeps the field itself).
    virtual void Set(std::size_t field, const Value& value) = 0;
    /// The value that the field will have.
    virtual void Get(std::size_t field, Value& out) = 0;

    virtual bool isDeleted() const noexcept = 0;
    virtual void SetDeleted(bool deleted) = 0;

    /// There is something to save. A new record always has.
    virtual bool isChanged() const noexcept = 0;

    /// Writes the changes. False, and nothing is written, when another process has changed one of the same
    /// fields since the edit began. Errors (nothing is written either): Locked, AccessDenied, DiskFull,
    /// AlreadyExists (an index refuses the key), Unsupported (an index cannot be kept up to date), IoFailure.
    /// After a success the edit stands on the saved record and may go on.
    virtual bool Save() = 0;
};

}  // namespace zu::technologies
