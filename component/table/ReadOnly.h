#pragma once

#include <windows.h>

#include <oleauto.h>

#include "component/table/DataView.h"

namespace zu::component {

/// Tells why the records of a view that is not updateable cannot be changed.
void TellReadOnly(const DataView& view, const VARIANT& tableDefn);

}  // namespace zu::component
