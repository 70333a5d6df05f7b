#include "component/table/ProcessTable.h"

#include <string>

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"
#include "component/table/RecordLoop.h"

namespace zu::component {

namespace {

/// The place where an error has ended the loop, in front of the error.
std::wstring Where(const TableReference& table, BSTR routineName, LONG record) {
    std::wstring where = L"Record " + std::to_wstring(record) + L" of those selected from table \"";
    where += table.TableName().empty() ? table.DataBaseName().view() : table.TableName().view();
    return where + L"\", routine " + std::wstring(com::View(routineName)) + L": ";
}

}  // namespace

void ProcessTable(const TableReference& table, BSTR routineName, const VARIANT& condition,
                  const SelectionLimits& limits, const ArgumentList& arguments, LONG& processed) {
    processed = 0;
    com::ComPtr<ZuDataView> view = table.FilterFlagged(condition, limits);
    if (!view) return;
    RecordLoop loop(Engine().context(), DataView(std::move(view)), routineName);
    com::SafeArray copies = RoutineArguments(arguments);
    try {
        loop.Run(copies);
    } catch (const com::ComError& error) {
        processed = loop.processed();
        throw com::ComError(error.code(), Where(table, routineName, processed + 1) + DescriptionOf(error),
                            error.source());
    } catch (...) {
        processed = loop.processed();
        throw;
    }
    processed = loop.processed();
}

}  // namespace zu::component
