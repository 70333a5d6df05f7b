#pragma once

#include <windows.h>

#include <oleauto.h>

namespace zu::host {

/// The engine's conversion of any value to a truth value.
///
/// Booleans as they are; numbers: not zero; dates: true; texts, in any case and padded or not: T, TRUE, Y,
/// YES, .T., .Y., ON and numbers other than zero are true, F, FALSE, N, NO, .F., .N., OFF, zero and blank are
/// false; Null, Empty and an omitted argument are false. An object counts by its default value. Anything else
/// is a type mismatch (ComError).
bool ToTruthValue(const VARIANT& value);

}  // namespace zu::host
