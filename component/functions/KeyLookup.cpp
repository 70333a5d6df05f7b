#include "component/functions/KeyLookup.h"

#include "component/table/KeyCondition.h"

namespace zu::component {

using com::ComPtr;

ComPtr<ZuDataView> SelectRecords(const VARIANT& tableDefn, const VARIANT& condition,
                                 const SelectionLimits& limits) {
    TableReference table;
    if (!table.Open(tableDefn)) return nullptr;
    return table.FilterFlagged(condition, limits);
}

ComPtr<ZuDataView> LookUpRecords(const VARIANT& tableDefn, const VARIANT& keyOrCondition,
                                 const VARIANT& exact, const SelectionLimits& limits) {
    TableReference table;
    if (!table.Open(tableDefn)) return nullptr;
    if (IsCondition(keyOrCondition)) return table.FilterFlagged(keyOrCondition, limits);
    table.OpenDefaultIndex();
    return table.LookupFlagged(keyOrCondition, exact, limits);
}

}  // namespace zu::component
