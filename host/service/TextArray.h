#pragma once

#include <string>
#include <vector>

#include "com/Variant.h"

namespace zu::host {

/// A zero-based array of values that hold the texts (UTF-8): the only kind of array that all script engines
/// index.
com::Variant TextArray(const std::vector<std::string>& texts);

}  // namespace zu::host
