#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "com/ComPtr.h"
#include "idl/ZuDataViewInterface.h"
#include "idl/Zuengine.h"

namespace zu::test {

/// What a record of the work table holds. All other fields follow from it, so that a torn record shows.
struct WorkRecord {
    LONG id = 0;
    LONG version = 0;
    bool deleted = false;
    bool operator==(const WorkRecord&) const = default;
};

/// The table of the process tests, opened through the database service as clients do. Failures are
/// com::ComErrors.
///
/// Fields: ID N(8), NAME C(20), AMOUNT N(12,2), BORN D, PAID L, NOTE M, CODE C(6); five tags.
class WorkView {
public:
    /// All records of the table, deleted ones too.
    explicit WorkView(std::wstring_view folder);

    LONG Count() const;
    /// The record at `index`, counted from 0; throws std::runtime_error when its fields do not belong
    /// together.
    WorkRecord Read(LONG index);
    /// Appends a record; false when it was not saved.
    bool Append(LONG id, LONG version);
    /// Between the two, records are only appended: as an import appends them.
    void BeginBatch();
    void EndBatch();
    /// Gives the record its fields of another version.
    bool Change(LONG index, LONG id, LONG version);
    bool Mark(LONG index, bool deleted);

    /// A number that is counted up in the record at `index`: reads and writes it, until it was saved. Answers
    /// how often another process was quicker.
    int CountUp(LONG index);
    LONG Counter(LONG index);

    /// What the service finds wrong with the table.
    static std::vector<std::wstring> Check(std::wstring_view folder);

private:
    bool Save(LONG id, LONG version);
    void Put(int field, const VARIANT& value);

    com::ComPtr<::DataTable> table_;
    com::ComPtr<ZuDataView> view_;
    std::vector<com::ComPtr<ZuDataField>> fields_;
};

inline constexpr wchar_t kWorkTable[] = L"work";
/// How often each of the processes that share a table counts up.
inline constexpr LONG kCountings = 250;

}  // namespace zu::test
