#pragma once

#include <windows.h>

#include <oleauto.h>

#include "idl/Zuengine.h"

namespace zu::component {

/// Loads a key into the key fields of an index, before the table seeks it.
///
/// One value goes into the first key field, with `exact` (turned into a Boolean by the engine) as its
/// exactness; further key fields stay as they are. An array alternates values and exactness: value 1, exact
/// 1, value 2, exact 2 ...; a last value without its exactness is exact, and elements left over when the key
/// fields run out are ignored. Throws ComError.
void LoadKey(DataIndex& index, const VARIANT& key, const VARIANT& exact);

}  // namespace zu::component
