#pragma once

#include <cstddef>
#include <vector>

#include "com/ComPtr.h"
#include "component/table/DataView.h"
#include "component/table/GatheredRows.h"
#include "component/table/RowCopy.h"
#include "idl/RecordRuns.h"

namespace zu::component {

/// Copies records without going through their fields, where both views can: whole runs of them are read, and
/// each is added at once. A record that needs a closer look is left to RowCopy.
class RunCopy {
public:
    /// All three must outlive the object. Throws ComError.
    RunCopy(DataView& source, DataView& destination, FieldMatch match, const GatheredRows& rows);

    /// True: there is a record to add, which AddRow has not tried yet; the source stands somewhere behind it.
    /// False: the records from the source's current one on are left to the caller.
    bool Next();
    /// Adds that record. False: nothing was done, and it is the source's current one now.
    bool AddRow();

private:
    void MatchNames(DataView& source, DataView& destination);
    /// Reading ahead does not pay when too many records need a closer look.
    bool Pays() const noexcept;

    DataView& source_;
    const GatheredRows& rows_;
    com::ComPtr<RecordRuns> runs_;
    std::size_t width_;               ///< cells of a record
    std::vector<ULONG> places_;       ///< by name: the fields of the destination
    std::vector<std::size_t> cells_;  ///< by name: the fields of the source that go there
    std::vector<textio::Cell> row_;
    std::size_t copied_ = 0;  ///< by position: so many fields
    const textio::Cell* run_ = nullptr;
    LONG first_ = 0;  ///< position of the run's first record
    ULONG count_ = 0;
    ULONG next_ = 0;
    std::size_t added_ = 0;
    std::size_t refused_ = 0;
};

}  // namespace zu::component
