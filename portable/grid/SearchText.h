#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "portable/grid/Cell.h"

namespace zu::grid {

/// The value without the blanks in front, which no search looks at.
std::u16string_view WithoutLeadingBlanks(std::u16string_view value) noexcept;

/// Whether the value begins with the text, in any case.
bool BeginsWith(std::u16string_view value, std::u16string_view text) noexcept;

/// Whether the whole value has the form of the pattern, case counting: "?" is any one character, "*" any run
/// of characters, "#" one digit, "[abc]" one of these ("[a-z]" a range, a "-" at either end stands for
/// itself),
/// "[!abc]" any other one. An opening bracket without a closing one stands for itself; "[]" for nothing.
/// Takes time proportional to the product of the lengths at most.
bool MatchesPattern(std::u16string_view value, std::u16string_view pattern) noexcept;

/// The next record that meets `matches`, counted from 0, behind record `start` (-1: from the top), and with
/// `loop` from the first one up to `start` after the last.
std::optional<Row> FindNext(Row start, Row count, bool loop, const std::function<bool(Row)>& matches);

}  // namespace zu::grid
