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
    /// How the records of the run in hand are known.
    enum class Run : unsigned char { None, Stored, Cells };

    void MatchNames(DataView& source, DataView& destination);
    /// Finds out whether records can be copied as they are stored.
    void MatchStored();
    void LocateRun();
    void ReadRun(ULONG most);
    bool AddStored();
    bool AddCells();
    void ForgetRun() noexcept;
    /// Reading ahead does not pay when too many records need a closer look.
    static bool Pays(std::size_t refused, std::size_t added) noexcept;

    DataView& source_;
    const GatheredRows& rows_;
    com::ComPtr<RecordRuns> runs_;
    std::size_t width_;               ///< cells of a record
    std::vector<ULONG> places_;       ///< by name: the fields of the destination
    std::vector<std::size_t> cells_;  ///< by name: the fields of the source that go there
    std::vector<textio::Cell> row_;
    std::size_t copied_ = 0;  ///< by position: so many fields
    bool takesStored_ = false;
    Run kind_ = Run::None;
    const textio::Cell* run_ = nullptr;
    const char* const* stored_ = nullptr;
    LONG first_ = 0;  ///< position of the run's first record
    ULONG count_ = 0;
    ULONG next_ = 0;
    std::size_t added_ = 0;
    std::size_t refused_ = 0;
    std::size_t storedAdded_ = 0;
    std::size_t storedRefused_ = 0;
};

}  // namespace zu::component
