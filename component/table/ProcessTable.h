#pragma once

#include "com/Variant.h"
#include "component/table/RoutineArguments.h"
#include "component/table/TableReference.h"

namespace zu::component {

/// Selects records of an open table and calls a routine of the engine's script for each. `processed` receives
/// the number of records for which the routine answered True, also when an error (thrown on) ends the run.
void ProcessTable(const TableReference& table, BSTR routineName, const VARIANT& condition,
                  const SelectionLimits& limits, const ArgumentList& arguments, LONG& processed);

}  // namespace zu::component
