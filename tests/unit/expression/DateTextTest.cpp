#include "host/expression/DateText.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "portable/calendar/Calendar.h"

namespace zu::expression {
namespace {

std::string Parsed(std::string_view text) {
    DateValue value;
    if (!ParseDate(text, value)) return "refused";
    if (value.isEmpty) return "empty";
    const calendar::Date date = calendar::FromJulianDay(value.julianDay);
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", date.year, date.month, date.day);
    std::string shown = buffer;
    if (value.hasTime) shown += " " + std::to_string(value.milliseconds);
    return shown;
}

TEST(DateText, ReadsEveryOrderOfTheParts) {
    EXPECT_EQ(Parsed("2024-01-31"), "2024-01-31");
    EXPECT_EQ(Parsed("2024/1/31"), "2024-01-31");
    EXPECT_EQ(Parsed("2024.01.31"), "2024-01-31");
    EXPECT_EQ(Parsed("01/31/2024"), "2024-01-31");
    EXPECT_EQ(Parsed("1-31-2024"), "2024-01-31");
    EXPECT_EQ(Parsed("31.01.2024"), "2024-01-31");
    EXPECT_EQ(Parsed("20240131"), "2024-01-31");
    EXPECT_EQ(Parsed("  2024-01-31  "), "2024-01-31");
}

TEST(DateText, PutsTwoDigitYearsAround2000) {
    EXPECT_EQ(Parsed("01/31/49"), "2049-01-31");
    EXPECT_EQ(Parsed("01/31/50"), "1950-01-31");
    EXPECT_EQ(Parsed("31.01.00"), "2000-01-31");
}

TEST(DateText, ReadsTimes) {
    EXPECT_EQ(Parsed("2024-01-31 00:00"), "2024-01-31 0");
    EXPECT_EQ(Parsed("2024-01-31 13:45:30"), "2024-01-31 49530000");
    EXPECT_EQ(Parsed("2024-01-31T13:45:30.5"), "2024-01-31 49530500");
    EXPECT_EQ(Parsed("2024-01-31 1:45 PM"), "2024-01-31 49500000");
    EXPECT_EQ(Parsed("2024-01-31 12:00 am"), "2024-01-31 0");
    EXPECT_EQ(Parsed("2024-01-31 12:00pm"), "2024-01-31 43200000");
    EXPECT_EQ(Parsed("2024-01-31 23:59:59.999"), "2024-01-31 86399999");
}

TEST(DateText, TakesBlanksAndSeparatorsForNoDate) {
    for (const auto* text : {"", "   ", "  /  /    ", "--", " . . "})
        EXPECT_EQ(Parsed(text), "empty");
}

TEST(DateText, RefusesEverythingElse) {
    for (const auto* text : {"2024-02-30", "2024-13-01", "0000-01-01", "2024-01", "2024", "01/31", "abc",
                             "2024-01-31x", "2024-01-31 25:00", "2024-01-31 12", "2024-01-31 12:60",
                             "2024-01-31 13:00 PM", "2024-01-31T", "2024-01/31", "123456789", "20241-01-01",
                             "2024-01-31 12:00:00.1234", "-2024-01-31", "2024-001-1 x"}) {
        EXPECT_EQ(Parsed(text), "refused") << text;
    }
}

TEST(DateText, WritesDaysAndTimes) {
    std::string out;
    AppendDigitDate(2460341, out);
    out += " ";
    AppendReadableDate(2460341, out);
    out += " ";
    AppendDigitTime(49530999, out);
    out += " ";
    AppendReadableTime(49530999, out);
    EXPECT_EQ(out, "20240131 01/31/2024 134530 13:45:30");
}

TEST(DateText, KnowsTheEndsOfTheCalendar) {
    EXPECT_EQ(kFirstDay, calendar::ToJulianDay({1, 1, 1}));
    EXPECT_EQ(kLastDay, calendar::ToJulianDay({9999, 12, 31}));
}

}  // namespace
}  // namespace zu::expression
