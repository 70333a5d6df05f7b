#pragma once

#include <windows.h>

#include <oleauto.h>

namespace zu::component {

/// Numbers from whatever a script, a text line or an edited cell holds. A text that is empty after its blanks
/// are taken off is 0; everything else follows the automation conversion of the wanted type, in the invariant
/// locale, so that a file reads the same on every machine. Throws ComError (type mismatch, overflow).
double ToDouble(const VARIANT& value);
float ToSingle(const VARIANT& value);
LONG ToLong(const VARIANT& value);
SHORT ToInteger(const VARIANT& value);
DECIMAL ToDecimal(const VARIANT& value);
CY ToCurrency(const VARIANT& value);

}  // namespace zu::component
