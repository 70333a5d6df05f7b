#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/expression/Program.h"
#include "host/expression/RecordLayout.h"
#include "host/technologies/Table.h"

namespace zu::dbf::cdx {

/// What one part of a key makes of a field, as far as it can be told from its text.
enum class PartKind {
    Field,      ///< the field itself
    Dtos,       ///< DTOS(field): eight digits
    Str,        ///< STR(field, width, decimals): digits, right-justified
    Upper,      ///< UPPER(field)
    Expression  ///< anything else
};

/// One part of a key: the whole key, or one of the texts that it joins with "+".
struct PartForm {
    technologies::KeyPart description;
    PartKind kind = PartKind::Expression;
    std::size_t width = 0;    ///< the most bytes that the part has, for texts
    bool fixedWidth = false;  ///< it always has them
    unsigned decimals = 0;    ///< of STR
    expression::Program program;
};

/// The parts of a key expression that compiles over `layout`, in order.
std::vector<PartForm> AnalyseParts(const expression::Program& key, const expression::RecordLayout& layout,
                                   bool descending);

}  // namespace zu::dbf::cdx
