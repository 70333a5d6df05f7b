#pragma once

#include "host/expression/DateText.h"

namespace zu::expression {

/// The local day and time of day, to the second.
DateValue LocalNow();

}  // namespace zu::expression
