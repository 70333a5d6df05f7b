#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>
#include <vector>

#include "com/Variant.h"

namespace zu::com {

/// Owns a SAFEARRAY(VARIANT).
class SafeArray {
public:
    SafeArray() noexcept = default;
    SafeArray(SafeArray&& other) noexcept : array_(std::exchange(other.array_, nullptr)) {}
    SafeArray& operator=(SafeArray&& other) noexcept {
        std::swap(array_, other.array_);
        return *this;
    }
    SafeArray(const SafeArray&) = delete;
    SafeArray& operator=(const SafeArray&) = delete;
    ~SafeArray();

    /// An array from 0 with copies of the elements. Throws std::bad_alloc.
    static SafeArray Of(const std::vector<Variant>& elements);
    /// The form that stands for no arguments: one element, indexed -1 to -1. Throws std::bad_alloc.
    static SafeArray NoArguments();

    SAFEARRAY* get() const noexcept { return array_; }
    /// For [in] and [in, out] parameters of type SAFEARRAY(VARIANT)*.
    SAFEARRAY** address() noexcept { return &array_; }
    /// As a VARIANT that owns the array.
    Variant ToVariant() && noexcept;

private:
    SAFEARRAY* array_ = nullptr;
};

/// The upper bound of an array's first dimension; -1 for one without bounds or elements.
LONG UpperBound(SAFEARRAY* array) noexcept;

/// Copies of the elements of an argument list, an array of VARIANTs: nothing when its upper bound is -1.
/// Throws ComError for another kind of array.
std::vector<Variant> ReadArguments(SAFEARRAY* array);

}  // namespace zu::com
