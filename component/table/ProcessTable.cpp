#include "component/table/ProcessTable.h"

#include "component/engine/EngineLink.h"
#include "component/table/RecordLoop.h"

namespace zu::component {

void ProcessTable(const TableReference& table, BSTR routineName, const VARIANT& condition,
                  const SelectionLimits& limits, const ArgumentList& arguments, LONG& processed) {
    processed = 0;
    com::ComPtr<ZuDataView> view = table.FilterFlagged(condition, limits);
    if (!view) return;
    RecordLoop loop(Engine().context(), DataView(std::move(view)), routineName);
    com::SafeArray copies = RoutineArguments(arguments);
    try {
        loop.Run(copies);
    } catch (...) {
        processed = loop.processed();
        throw;
    }
    processed = loop.processed();
}

}  // namespace zu::component
