#pragma once

#include "portable/calendar/Calendar.h"

namespace zu::samples {

/// The date of the last change in the headers of the tables: fixed, so that a table made tomorrow has the
/// same bytes.
inline constexpr calendar::Date kLastChange{2026, 1, 1};

}  // namespace zu::samples
