#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "host/expression/Token.h"

namespace zu::expression {

/// The longest source text, in characters.
inline constexpr std::size_t kMaxSourceLength = 65536;

/// Cuts a source text into tokens; the last one is End. Faults are Syntax errors with their position.
std::vector<Token> Tokenize(std::u16string_view source);

}  // namespace zu::expression
