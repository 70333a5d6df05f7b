#pragma once

#include <string>

#include "host/expression/Node.h"

namespace zu::expression {

/// The text of a bound tree in one fixed form (UTF-8): names in upper case without a table, every operation
/// in parentheses, functions by their first name. Trees that mean the same in the same words have the same.
std::string CanonicalText(const Node& root);

}  // namespace zu::expression
