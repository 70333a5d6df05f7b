#pragma once

#include <windows.h>

#include <oleauto.h>

#include <vector>

#include "com/Variant.h"

namespace zu::com {

/// Longest list that is read from a script object; an object can claim any length.
inline constexpr LONG kMaxListLength = 1000000;

/// Reads a list in any form that script engines have for one: a one-dimensional array of any element type, by
/// value or by reference, and an object with `length` and index names, such as a JScript array. Elements come
/// counted from 0 whatever the array's bounds are; holes of a script array are Empty.
///
/// Answers false, and leaves `elements` alone, when the value is no list. Throws ComError for a list that
/// cannot be read: more than one dimension, an absurd length, a failing object.
bool ReadList(const VARIANT& value, std::vector<Variant>& elements);

/// True when ReadList would take the value for a list; reads no element.
bool IsList(const VARIANT& value);

/// The array that a VARIANT holds, looked through references; null when it holds none.
SAFEARRAY* ArrayOf(const VARIANT& value) noexcept;
/// True for arrays of any form, also for one that was never given bounds.
bool IsArray(const VARIANT& value) noexcept;

/// A new SAFEARRAY(VARIANT) from 0, for the caller to own. Throws std::bad_alloc.
[[nodiscard]] SAFEARRAY* NewVariantArray(const std::vector<Variant>& elements);

}  // namespace zu::com
