#pragma once

#include <array>
#include <cstddef>

#include "host/technologies/dbf/DbfVersion.h"
#include "portable/calendar/Calendar.h"

namespace zu::dbf::write {

/// The day of now, UTC.
calendar::Date Today() noexcept;

/// The three bytes of a header that say when the table was changed last: FoxPro counts years modulo 100, the
/// others from 1900.
std::array<std::byte, 3> HeaderDate(const DbfVersion& version, const calendar::Date& date) noexcept;

}  // namespace zu::dbf::write
