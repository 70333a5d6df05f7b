#pragma once

#include <optional>

#include "host/expression/Compiler.h"
#include "host/expression/Node.h"
#include "host/expression/Program.h"

namespace zu::expression {

/// What the terms that a condition joins with AND say about the value of `key`: about all of it, or about the
/// first of the texts that it is joined of. Nothing when they say nothing.
std::optional<KeyRange> FindRange(const Node& condition, Compiler& compiler, const Node& key);

}  // namespace zu::expression
