#pragma once

#include "host/expression/Node.h"
#include "host/expression/RecordLayout.h"
#include "portable/text/CodePage.h"

namespace zu::expression {

/// Gives every node its meaning: fields for names, functions for calls, types, text widths, literals in the
/// bytes of `codePage`. Without a layout names stay names, asked for when the program runs.
/// Faults (unknown names, wrong types, wrong numbers of arguments) are Syntax errors with their position.
void Bind(Node& root, const RecordLayout* layout, const text::CodePage& codePage);

/// The value does not depend on the record or on names.
bool IsConstant(const Node& node) noexcept;

}  // namespace zu::expression
