#pragma once

#include <windows.h>

namespace zu::component {

/// The type codes of fields that the grid tells apart: automation types, and one of the views' own.
enum FieldType : LONG {
    kNullField = 1,
    kIntegerField = 2,
    kLongField = 3,
    kSingleField = 4,
    kDoubleField = 5,
    kCurrencyField = 6,
    kDateField = 7,
    kTextField = 8,
    kBooleanField = 11,
    kDecimalField = 14,
    kByteField = 17,
    kLongTextField = 100,
};

constexpr bool IsNumber(LONG type) noexcept {
    return (type >= kIntegerField && type <= kCurrencyField) || type == kDecimalField || type == kByteField;
}

/// Whether a typed text can become a value of the type; others are shown only.
constexpr bool CanBeTyped(LONG type) noexcept {
    return IsNumber(type) || type == kNullField || type == kDateField || type == kTextField ||
           type == kBooleanField || type == kLongTextField;
}

}  // namespace zu::component
