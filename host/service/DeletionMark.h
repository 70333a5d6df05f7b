#pragma once

#include <cstdint>

#include "host/technologies/Table.h"

namespace zu::host {

/// Marks a record as deleted, or takes the mark off, and saves that alone. False when the mark was as wanted
/// already, also when another process was quicker.
bool MarkRecord(technologies::Table& table, std::uint32_t number, bool deleted);

}  // namespace zu::host
