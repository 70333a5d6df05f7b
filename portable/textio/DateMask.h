#pragma once

#include <string>
#include <string_view>

namespace zu::textio {

/// Arrangements of a date's parts, by the numbers of the public enumeration. Any other number is no
/// arrangement.
enum class DateForm : int {
    Custom = -1,
    Ansi = 0,
    DayMonthYear = 1,
    MonthDayYear = 2,
    YearMonthDay = 3,
    DayNameYear = 4,
    YearNameDay = 5,
    DayFullNameYear = 6,
    YearFullNameDay = 7
};

/// True for the arrangements that can be chosen; Custom comes about by setting a mask.
bool IsArrangement(int dateForm) noexcept;

/// Builds `mask` for the arrangement and its separator. Ansi sets the separator to "."; Custom leaves both.
void BuildDateMask(DateForm form, std::u16string& separator, std::u16string& mask);

}  // namespace zu::textio
