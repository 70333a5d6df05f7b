#include "host/service/UndeleteRecords.h"

#include "com/Bstr.h"
#include "host/service/DeletionMark.h"
#include "host/service/RunSelection.h"

namespace zu::host {

void UndeleteRecords(technologies::Table& table, std::wstring_view condition) {
    technologies::Selection selection;
    selection.condition = com::AsUtf16(condition);
    selection.includeDeleted = true;
    for (const std::uint32_t record : RunSelection(table, selection))
        if (table.IsDeleted(record)) MarkRecord(table, record, false);
}

}  // namespace zu::host
