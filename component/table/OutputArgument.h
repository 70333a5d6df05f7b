#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/Variant.h"

namespace zu::component {

/// Writes an optional output of a function. An argument that was left out stays alone; references are
/// followed, also those to a variable of a type of its own, which takes the value only if it can be
/// converted.
void WriteOutput(VARIANT* argument, com::Variant value) noexcept;

}  // namespace zu::component
