#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "host/expression/Clock.h"
#include "host/expression/DateText.h"
#include "host/expression/functions/Functions.h"
#include "host/expression/functions/Widths.h"
#include "portable/calendar/Calendar.h"

namespace zu::expression {

namespace {

constexpr std::array<std::string_view, 7> kWeekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                    "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> kMonths{"January",   "February", "March",    "April",
                                                   "May",       "June",     "July",     "August",
                                                   "September", "October",  "November", "December"};

/// Sunday is 0. Julian day 0 was a Monday.
int Weekday(std::int32_t julianDay) noexcept {
    return (julianDay + 1) % 7;
}

calendar::Date DayOf(const Slot& value) noexcept {
    return calendar::FromJulianDay(value.julianDay);
}

/// The parts of an empty date are 0, as keys have them.
template <int (*kPart)(const Slot&)>
void Part(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    step.out->SetNumber(value.isEmpty ? 0 : kPart(value));
}

int YearOf(const Slot& value) noexcept {
    return DayOf(value).year;
}
int MonthOf(const Slot& value) noexcept {
    return DayOf(value).month;
}
int DayOfMonth(const Slot& value) noexcept {
    return DayOf(value).day;
}
int QuarterOf(const Slot& value) noexcept {
    return (DayOf(value).month + 2) / 3;
}
int DayOfWeek(const Slot& value) noexcept {
    return Weekday(value.julianDay) + 1;
}
int HourOf(const Slot& value) noexcept {
    return value.milliseconds / 3600000;
}
int MinuteOf(const Slot& value) noexcept {
    return value.milliseconds / 60000 % 60;
}
int SecondOf(const Slot& value) noexcept {
    return value.milliseconds / 1000 % 60;
}

int WeekOf(const Slot& value) noexcept {
    const std::int32_t newYear = calendar::ToJulianDay({DayOf(value).year, 1, 1});
    return (value.julianDay - newYear + Weekday(newYear)) / 7 + 1;
}

void Cdow(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    step.out->SetText(value.isEmpty ? std::string_view{}
                                    : kWeekdays[static_cast<std::size_t>(Weekday(value.julianDay))]);
}

void CMonth(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    step.out->SetText(value.isEmpty ? std::string_view{}
                                    : kMonths[static_cast<std::size_t>(DayOf(value).month - 1)]);
}

void SetDay(const calendar::Date& date, Register& out) {
    if (!calendar::IsValid(date)) return out.SetNull(Type::Date);
    out.SetDate(calendar::ToJulianDay(date));
}

int DaysInMonth(int year, int month) noexcept {
    int day = 31;
    while (day > 28 && !calendar::IsValid({year, month, day}))
        --day;
    return day;
}

/// The same day `months` later, or the last one of a shorter month.
void ShiftMonths(const Slot& value, double months, bool toEnd, Register& out) {
    constexpr double kMostMonths = 12.0 * 9999;
    if (!(std::fabs(months) <= kMostMonths)) return out.SetNull(Type::Date);
    const calendar::Date date = DayOf(value);
    const int count = date.year * 12 + date.month - 1 + static_cast<int>(months);
    if (count < 12) return out.SetNull(Type::Date);
    calendar::Date shifted{count / 12, count % 12 + 1, date.day};
    const int last = DaysInMonth(shifted.year, shifted.month);
    if (toEnd || shifted.day > last) shifted.day = last;
    SetDay(shifted, out);
}

void GoMonth(const Instruction& step, const Machine&) {
    ShiftMonths(step.argument(0), step.argument(1).number, false, *step.out);
}

void EoMonth(const Instruction& step, const Machine&) {
    ShiftMonths(step.argument(0), step.count() > 1 ? step.argument(1).number : 0, true, *step.out);
}

/// A number as a part of a date; -1 for what cannot be one.
int PartOf(const Instruction& step, std::size_t index) noexcept {
    if (index >= step.count()) return 0;
    const double value = step.argument(index).number;
    return value >= 0 && value <= 9999 ? static_cast<int>(value) : -1;
}

void DateFrom(const Instruction& step, const Machine&) {
    SetDay({PartOf(step, 0), PartOf(step, 1), PartOf(step, 2)}, *step.out);
}

void DateTimeFrom(const Instruction& step, const Machine&) {
    const calendar::Date date{PartOf(step, 0), PartOf(step, 1), PartOf(step, 2)};
    const int hour = PartOf(step, 3);
    const int minute = PartOf(step, 4);
    const int second = PartOf(step, 5);
    const bool isTime = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
    if (!calendar::IsValid(date) || !isTime) return step.out->SetNull(Type::DateTime);
    step.out->SetDateTime(calendar::ToJulianDay(date), ((hour * 60 + minute) * 60 + second) * 1000);
}

void Today(const Instruction& step, const Machine&) {
    step.out->SetDate(LocalNow().julianDay);
}

void Now(const Instruction& step, const Machine&) {
    const DateValue now = LocalNow();
    step.out->SetDateTime(now.julianDay, now.milliseconds);
}

void TimeText(const Instruction& step, const Machine&) {
    step.out->buffer.clear();
    AppendReadableTime(LocalNow().milliseconds, step.out->buffer);
    step.out->SetBuffer();
}

void ToDate(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    value.isEmpty ? step.out->SetEmpty(Type::Date) : step.out->SetDate(value.julianDay);
}

void ToDateTime(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    value.isEmpty ? step.out->SetEmpty(Type::DateTime)
                  : step.out->SetDateTime(value.julianDay, value.milliseconds);
}

constexpr NullRule kStrict = NullRule::Strict;
constexpr NullRule kEmpty = NullRule::TakesEmpty;

constexpr std::array kFunctions{
    Function{"DATE", "", 'D', kStrict, nullptr, Today},
    Function{"DATE", "NNN", 'D', kStrict, nullptr, DateFrom},
    Function{"DATETIME", "", 'M', kStrict, nullptr, Now},
    Function{"DATETIME", "NNNnnn", 'M', kStrict, nullptr, DateTimeFrom},
    Function{"TIME", "", 'T', kStrict, widths::Fixed<8>, TimeText},
    Function{"YEAR", "D", 'N', kEmpty, nullptr, Part<YearOf>},
    Function{"MONTH", "D", 'N', kEmpty, nullptr, Part<MonthOf>},
    Function{"DAY", "D", 'N', kEmpty, nullptr, Part<DayOfMonth>},
    Function{"QUARTER", "D", 'N', kEmpty, nullptr, Part<QuarterOf>},
    Function{"WEEK", "D", 'N', kEmpty, nullptr, Part<WeekOf>},
    Function{"DOW", "D", 'N', kEmpty, nullptr, Part<DayOfWeek>},
    Function{"HOUR", "D", 'N', kEmpty, nullptr, Part<HourOf>},
    Function{"MINUTE", "D", 'N', kEmpty, nullptr, Part<MinuteOf>},
    Function{"SEC", "D", 'N', kEmpty, nullptr, Part<SecondOf>, false, "SECOND"},
    Function{"CDOW", "D", 'T', kEmpty, widths::AtMost<9>, Cdow},
    Function{"CMONTH", "D", 'T', kEmpty, widths::AtMost<9>, CMonth},
    Function{"GOMONTH", "DN", 'D', kStrict, nullptr, GoMonth},
    Function{"EOMONTH", "Dn", 'D', kStrict, nullptr, EoMonth},
    Function{"TTOD", "D", 'D', kEmpty, nullptr, ToDate},
    Function{"DTOT", "D", 'M', kEmpty, nullptr, ToDateTime},
};

}  // namespace

std::span<const Function> DateFunctions() {
    return kFunctions;
}

}  // namespace zu::expression
