#pragma once

#include "host/expression/Program.h"
#include "host/expression/RecordLayout.h"

namespace zu::dbf::cdx {

/// The expression reads memo fields. No index can be kept up to date by it: the content of a memo is not in
/// the record, and the programs that made the format have no such keys either. A text in quotes that looks
/// like the name of a memo field is taken for one, too.
bool ReadsMemos(const expression::Program& program, const expression::RecordLayout& layout);

}  // namespace zu::dbf::cdx
