#pragma once

#include <windows.h>

#include <oleauto.h>

#include <array>

#include "com/SafeArray.h"

namespace zu::component {

/// Argument0 to Argument9 as a caller gave them; null or missing ends the list.
using ArgumentList = std::array<const VARIANT*, 10>;

/// The arguments of a routine call: copies of the given ones up to the first that is missing, or, with none,
/// the form that stands for no arguments. What the routine writes into it stays there from call to call and
/// never reaches the caller's variables.
com::SafeArray RoutineArguments(const ArgumentList& given);

}  // namespace zu::component
