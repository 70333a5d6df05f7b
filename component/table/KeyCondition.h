#pragma once

#include <windows.h>

#include <oleauto.h>

namespace zu::component {

/// The one rule by which an argument serves both for key values and for conditions: a text that contains any
/// of
/// "=", "<", ">" or "(" is a condition; any other text, and every other content, is a key.
bool IsCondition(const VARIANT& keyOrCondition) noexcept;

}  // namespace zu::component
