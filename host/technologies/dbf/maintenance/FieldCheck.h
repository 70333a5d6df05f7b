#pragma once

#include <cstddef>
#include <string>

#include "host/technologies/dbf/TableLayout.h"

namespace zu::dbf::maintenance {

/// What is wrong with the bytes of a field of a record, in words that follow "the field NAME"; empty when
/// they are sound. Blank fields are sound; memo fields are looked at as far as the pointer is a number.
std::string FaultIn(const TableLayout& layout, std::size_t field, const std::byte* record);

}  // namespace zu::dbf::maintenance
