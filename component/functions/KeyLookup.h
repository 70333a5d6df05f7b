#pragma once

#include "com/ComPtr.h"
#include "component/table/TableReference.h"

namespace zu::component {

/// The selections behind the public functions. Each opens the table of the definition for itself and lets it
/// go on return; the view stays usable. Null when the table cannot be opened. They throw ComError.

/// The records that meet a condition.
com::ComPtr<ZuDataView> SelectRecords(const VARIANT& tableDefn, const VARIANT& condition,
                                      const SelectionLimits& limits);

/// The records under a key of the table's default index, or, when the key is a condition (see IsCondition),
/// those that meet it.
com::ComPtr<ZuDataView> LookUpRecords(const VARIANT& tableDefn, const VARIANT& keyOrCondition,
                                      const VARIANT& exact, const SelectionLimits& limits);

}  // namespace zu::component
