#pragma once

#include <string_view>

namespace zu::textio {

/// The English name of a month, 1 to 12, whatever the user's language: a file must read the same everywhere.
std::string_view MonthName(int month) noexcept;
/// Its first three letters.
std::string_view ShortMonthName(int month) noexcept;
/// The month with this name or its first three letters, in any case; 0 when there is none.
int FindMonth(std::string_view name) noexcept;

}  // namespace zu::textio
