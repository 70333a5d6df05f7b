#pragma once

#include <string_view>

#include "host/expression/Node.h"
#include "host/expression/Slot.h"

namespace zu::expression {

/// `text` without the blanks and NULs at its end, which never matter in comparisons.
std::string_view WithoutPadding(std::string_view text) noexcept;

/// Less than 0, 0 or more than 0: the order of the bytes, the shorter text filled up with blanks.
int CompareTexts(std::string_view a, std::string_view b) noexcept;

/// As CompareTexts for any two values of comparable types, neither of them null. A date stands for its
/// midnight beside a date-time.
int CompareSlots(const Slot& a, const Slot& b) noexcept;

bool AreComparable(Type a, Type b) noexcept;

/// What an operator says to the outcome of a comparison.
bool Holds(Operator op, int order) noexcept;

/// The operator that holds for (b, a) when `op` holds for (a, b).
Operator Mirrored(Operator op) noexcept;

/// The name of a type for messages: "a number", "a text", ...
std::string_view TypeName(Type type) noexcept;

}  // namespace zu::expression
