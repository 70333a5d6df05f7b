#pragma once

#include "com/Variant.h"

namespace zu::component {

/// A copy of an optional argument with references looked through; an omitted one (also a null pointer) is the
/// omitted VARIANT again, or the default.
inline com::Variant Given(const VARIANT* argument) {
    return com::IsMissing(argument) ? com::Variant::Missing() : com::Variant(*argument);
}
inline com::Variant GivenOr(const VARIANT* argument, com::Variant defaultValue) {
    return com::IsMissing(argument) ? std::move(defaultValue) : com::Variant(*argument);
}

/// A text argument as a VARIANT; an omitted one is the empty text.
inline com::Variant GivenText(BSTR argument) {
    return com::Variant(com::View(argument));
}

}  // namespace zu::component
