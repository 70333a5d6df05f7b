#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/Variant.h"

namespace zu::component {

/// Whether the VARIANT holds an array of any element type, also by reference.
bool IsArray(const VARIANT& value) noexcept;
/// The array in the VARIANT, also by reference; null when it holds none or one that was never dimensioned.
SAFEARRAY* ArrayOf(const VARIANT& value) noexcept;

/// Reads an array by the indexes that a script would use, whatever its element type and bounds.
class ArrayElements {
public:
    /// `array` stays the caller's and must outlive this object. Null reads as an array never dimensioned.
    explicit ArrayElements(SAFEARRAY* array) noexcept : array_(array) {}

    /// Lower and upper bound of the first dimension. Throws "subscript out of range" for an array never
    /// dimensioned.
    LONG lowerBound() const;
    LONG upperBound() const;
    /// A copy of one element. Throws "subscript out of range" outside the bounds and for an array of more
    /// than one dimension.
    com::Variant At(LONG index) const;

private:
    SAFEARRAY* array_;
};

}  // namespace zu::component
