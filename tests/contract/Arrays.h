#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "com/Variant.h"

namespace zu::contract {

/// SAFEARRAYs as scripts and other callers make them, each owned by the VARIANT that it sits in.

/// An array of VARIANTs, indexed from 0.
com::Variant Array(const std::vector<com::Variant>& elements);
com::Variant Array(std::initializer_list<const wchar_t*> texts);
com::Variant Array(std::initializer_list<com::Variant> elements);
/// Typed arrays with any lower bound.
com::Variant TextArray(const std::vector<std::wstring_view>& texts, LONG lowerBound);
com::Variant LongArray(const std::vector<LONG>& numbers, LONG lowerBound);
/// Two by two VARIANTs.
com::Variant TwoDimensionalArray();
/// What `Dim a()` holds: the type without an array.
com::Variant UndimensionedArray();

/// VT_BYREF|VT_VARIANT, which script engines pass for a variable. The variable stays the owner.
VARIANT ReferenceTo(com::Variant& variable);

}  // namespace zu::contract
