#include "host/service/UndeleteRecords.h"

#include <string>
#include <vector>

#include "com/Bstr.h"
#include "host/service/DeletionMark.h"
#include "host/service/RunSelection.h"
#include "portable/error/Error.h"

namespace zu::host {

void UndeleteRecords(technologies::Table& table, std::wstring_view condition) {
    technologies::Selection selection;
    selection.condition = com::AsUtf16(condition);
    selection.includeDeleted = true;
    std::vector<std::uint32_t> records = RunSelection(table, selection);
    std::erase_if(records, [&](std::uint32_t record) { return !table.IsDeleted(record); });
    technologies::MarkOutcome outcome;
    if (!MarkRecords(table, L"undelete", records, false, outcome))
        throw Error(ErrorKind::Cancelled, "The job was ended by the user after " +
                                              std::to_string(outcome.changed) +
                                              " records; what was done until then stays");
}

}  // namespace zu::host
