#pragma once

#include <cstddef>
#include <cstdint>

#include "host/expression/RecordLayout.h"

namespace zu::dbf {

/// The records of an open table as they lie in memory: what indexes need of their table.
class RecordAccess {
public:
    virtual ~RecordAccess() = default;

    /// All records of the table now, deleted ones included.
    virtual std::uint32_t Count() = 0;
    /// The bytes of record `number` (one-based), the deletion mark first; valid until the next call of any
    /// member. Null when the number is out of range.
    virtual const std::byte* Record(std::uint32_t number) = 0;
    /// Records stay where they are, whatever is read meanwhile, and several threads may read them.
    virtual bool areStable() const noexcept { return false; }
    /// Fetches memo texts for key expressions that use them; null when the table has none.
    virtual expression::MemoReader* memos() = 0;
};

}  // namespace zu::dbf
