#include "host/service/UndeleteRecords.h"

#include <vector>

#include "com/Bstr.h"
#include "host/service/RunSelection.h"

namespace zu::host {

void UndeleteRecords(technologies::Table& table, std::wstring_view condition) {
    technologies::Selection selection;
    selection.condition = com::AsUtf16(condition);
    selection.includeDeleted = true;
    std::vector<std::uint32_t> records = RunSelection(table, selection);
    std::erase_if(records, [&](std::uint32_t record) { return !table.IsDeleted(record); });
    technologies::MarkOutcome outcome;
    table.MarkRecords(records, false, outcome);
}

}  // namespace zu::host
