#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zu::expression {

/// A day with or without a time of day, as texts and literals give it.
struct DateValue {
    bool isEmpty = false;  ///< no day at all
    bool hasTime = false;
    std::int32_t julianDay = 0;
    std::int32_t milliseconds = 0;  ///< since midnight
};

/// Reads a date, with a time behind it or not. Understood are 2024-01-31 (year first, also with "/" or "."
/// between), 01/31/2024 and 01-31-2024 (month first), 31.01.2024 (day first with points) and 20240131; two
/// digits of a year mean 1950 to 2049. Times: 13:45, 13:45:00, 13:45:00.250, 1:45 PM, after blanks or a "T".
/// Nothing but blanks and separators is the empty date. False for anything else.
bool ParseDate(std::string_view text, DateValue& out) noexcept;

/// Reads exactly eight digits YYYYMMDD of an existing day; false for anything else.
bool ParseDigitDate(const char* digits, std::int32_t& julianDay) noexcept;

/// Appends YYYYMMDD, MM/DD/YYYY, HHMMSS or HH:MM:SS.
void AppendDigitDate(std::int32_t julianDay, std::string& out);
void AppendReadableDate(std::int32_t julianDay, std::string& out);
void AppendDigitTime(std::int32_t milliseconds, std::string& out);
void AppendReadableTime(std::int32_t milliseconds, std::string& out);

/// The days that dates can have: years 1 to 9999.
inline constexpr std::int32_t kFirstDay = 1721426;
inline constexpr std::int32_t kLastDay = 5373484;
inline constexpr std::int32_t kDayMilliseconds = 86400000;

}  // namespace zu::expression
