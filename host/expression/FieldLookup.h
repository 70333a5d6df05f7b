#pragma once

#include <cstddef>

#include "host/expression/FieldReader.h"
#include "host/expression/Node.h"

namespace zu::expression {

/// The field that a Name node means, without regard to case. A name longer than ten characters that no field
/// has stands for its first ten: tables in a database container have long names outside the file. A table's
/// name in front must be the table's own (any one where the layout has none).
/// Syntax errors: unknown table, unknown field (the nearest name is suggested), a field without a value for
/// expressions.
std::size_t FindField(const RecordLayout& layout, const Node& name);

}  // namespace zu::expression
