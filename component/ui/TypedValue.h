#pragma once

#include <string>
#include <string_view>

#include "com/Variant.h"

namespace zu::component {

/// A typed text as a value of a field, and what the user should know about the conversion (nothing when it
/// was plain).
struct TypedValue {
    com::Variant value;
    std::wstring note;
};

/// The value that a typed text means in a field of this type code:
///
///     1          Null for the empty text
///     2 3 4 5    the number at the front of the text, 0 when there is none
///     6 14       the text as a number; 0 for blanks
///     7          the date that the text denotes, else Null
///     8 100      the text
///     11         what the engine takes the text for
///     17         a whole number from 0 to 255
///
/// and Empty for everything else. Throws ComError for a number out of the type's range and for a text that
/// the conversion refuses. A decimal comma of the user's settings is taken for the decimal point.
TypedValue ToTypedValue(std::wstring_view text, LONG type);

}  // namespace zu::component
