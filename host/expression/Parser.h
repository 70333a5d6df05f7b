#pragma once

#include <string_view>

#include "host/expression/Node.h"

namespace zu::expression {

/// Reads an expression into its tree; names and functions are not looked up yet. Faults are Syntax errors.
///
/// Precedence, loosest first: OR; AND; NOT; comparisons, $, LIKE, BETWEEN, IN, IS NULL; + -; * / %; the sign;
/// ^ and **. Operators of one level are read from left to right.
NodePtr Parse(std::u16string_view source);

}  // namespace zu::expression
