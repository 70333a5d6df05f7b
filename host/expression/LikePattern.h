#pragma once

#include <optional>
#include <string_view>

namespace zu::expression {

/// Whether the whole of `text` has the form of `pattern`: "%" and "*" stand for any number of characters,
/// "_" and "?" for exactly one, everything else for itself. Blanks and NULs at both ends' right side do not
/// matter. With `countsCharacters` the texts are UTF-8 and "one" is one character. Takes time proportional
/// to the product of the lengths at most.
bool MatchesLike(std::string_view text, std::string_view pattern, bool countsCharacters) noexcept;

/// The text that a pattern such as "abc%" begins with, when the pattern says nothing else and the text does
/// not end with a blank.
std::optional<std::string_view> PrefixOf(std::string_view pattern) noexcept;

}  // namespace zu::expression
