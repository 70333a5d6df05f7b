#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/Variant.h"

namespace zu::host {

/// What the default member (dispatch id 0) of the object in `value` answers, never an object itself.
/// No object is kObjectNotSet, an object without such a member a type mismatch (ComError).
com::Variant DefaultValue(const VARIANT& value);

}  // namespace zu::host
