#include "portable/calendar/Calendar.h"

#include <cmath>

namespace zu::calendar {

namespace {

constexpr std::int32_t kDayMilliseconds = 86'400'000;

bool IsLeapYear(int year) noexcept {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysIn(int year, int month) noexcept {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

}  // namespace

std::int32_t ToJulianDay(const Date& date) noexcept {
    const std::int64_t y = date.year;
    const std::int64_t m = date.month;
    const std::int64_t a = (m - 14) / 12;
    return static_cast<std::int32_t>((1461 * (y + 4800 + a)) / 4 + (367 * (m - 2 - 12 * a)) / 12 -
                                     (3 * ((y + 4900 + a) / 100)) / 4 + date.day - 32075);
}

Date FromJulianDay(std::int32_t julianDay) noexcept {
    std::int64_t l = std::int64_t{julianDay} + 68569;
    const std::int64_t n = (4 * l) / 146097;
    l -= (146097 * n + 3) / 4;
    const std::int64_t i = (4000 * (l + 1)) / 1461001;
    l = l - (1461 * i) / 4 + 31;
    const std::int64_t j = (80 * l) / 2447;
    Date date;
    date.day = static_cast<int>(l - (2447 * j) / 80);
    l = j / 11;
    date.month = static_cast<int>(j + 2 - 12 * l);
    date.year = static_cast<int>(100 * (n - 49) + i + l);
    return date;
}

bool IsValid(const Date& date) noexcept {
    return date.year >= 1 && date.year <= 9999 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= DaysIn(date.year, date.month);
}

double ToAutomationDate(std::int32_t julianDay, std::int32_t milliseconds) noexcept {
    const auto day = static_cast<double>(julianDay - kAutomationEpoch);
    const double time = static_cast<double>(milliseconds) / kDayMilliseconds;
    return day < 0 ? day - time : day + time;
}

void FromAutomationDate(double date, std::int32_t& julianDay, std::int32_t& milliseconds) noexcept {
    // Beyond this there is no year 1 to 9999; it also keeps NaN and infinities out of the conversions.
    constexpr double kFarthest = 3'000'000;
    if (!(std::fabs(date) <= kFarthest)) {
        julianDay = 0;
        milliseconds = 0;
        return;
    }
    double whole = std::trunc(date);
    const double time = std::round(std::fabs(date - whole) * kDayMilliseconds);
    julianDay = static_cast<std::int32_t>(whole) + kAutomationEpoch;
    milliseconds = static_cast<std::int32_t>(time);
    if (milliseconds >= kDayMilliseconds) {
        milliseconds -= kDayMilliseconds;
        ++julianDay;
    }
}

}  // namespace zu::calendar
