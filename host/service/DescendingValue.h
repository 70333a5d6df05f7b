#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/Variant.h"
#include "host/technologies/Technology.h"

namespace zu::host {

/// The form of `value` that indexes of `technology` hold for descending order. Null, Empty and an omitted
/// value stay as they are; an array or an object without a default value is a type mismatch (ComError).
com::Variant DescendingValue(const VARIANT& value, technologies::Technology& technology);

}  // namespace zu::host
