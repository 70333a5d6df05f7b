#pragma once

#include <cstdint>
#include <optional>

namespace zu::calendar {

/// A day of the proleptic Gregorian calendar.
struct Date {
    int year = 0;
    int month = 0;  ///< 1 to 12
    int day = 0;    ///< 1 to 31
    bool operator==(const Date&) const = default;
};

/// Julian day numbers as DBF files use them: 2440588 is 1970-01-01.
/// Formula: the integer algorithm of Fliegel and Van Flandern (1968) for the Gregorian calendar.
std::int32_t ToJulianDay(const Date& date) noexcept;
Date FromJulianDay(std::int32_t julianDay) noexcept;

/// True for a day that exists, years 1 to 9999.
bool IsValid(const Date& date) noexcept;

/// The Julian day of serial day 0 of automation dates (1899-12-30).
inline constexpr std::int32_t kAutomationEpoch = 2415019;

/// An automation DATE (days since 1899-12-30, the fraction is the time of day also for negative days)
/// from a Julian day and milliseconds since midnight, and back (rounded to the millisecond).
double ToAutomationDate(std::int32_t julianDay, std::int32_t milliseconds) noexcept;
void FromAutomationDate(double date, std::int32_t& julianDay, std::int32_t& milliseconds) noexcept;

}  // namespace zu::calendar
