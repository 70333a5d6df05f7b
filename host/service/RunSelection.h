#pragma once

#include <cstdint>
#include <vector>

#include "host/technologies/Table.h"

namespace zu::host {

/// Runs a selection. What is wrong with its condition becomes the engine's error for conditions, with the
/// position counted from 1.
std::vector<std::uint32_t> RunSelection(technologies::Table& table, const technologies::Selection& selection);

}  // namespace zu::host
