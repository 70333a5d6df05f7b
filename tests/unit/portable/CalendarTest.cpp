#include "portable/calendar/Calendar.h"

#include <gtest/gtest.h>

#include <limits>

namespace zu::calendar {
namespace {

TEST(Calendar, KnowsTheAnchorsOfJulianDays) {
    EXPECT_EQ(ToJulianDay({1970, 1, 1}), 2440588);
    EXPECT_EQ(ToJulianDay({1901, 1, 1}), 2415386);
    EXPECT_EQ(ToJulianDay({1, 1, 1}), 1721426);
    EXPECT_EQ(ToJulianDay({1899, 12, 30}), kAutomationEpoch);
}

TEST(Calendar, CountsEveryDayOfTenThousandYearsOnce) {
    Date expected{1, 1, 1};
    for (std::int32_t day = 1721426; day <= 5373484; ++day) {
        const Date date = FromJulianDay(day);
        ASSERT_EQ(date, expected) << day;
        ASSERT_EQ(ToJulianDay(date), day);
        ++expected.day;
        if (!IsValid(expected)) expected = {expected.year, expected.month + 1, 1};
        if (expected.month == 13) expected = {expected.year + 1, 1, 1};
    }
    EXPECT_EQ(expected, (Date{10000, 1, 1}));
}

TEST(Calendar, RefusesDaysThatDoNotExist) {
    EXPECT_TRUE(IsValid({2024, 2, 29}));
    EXPECT_TRUE(IsValid({2000, 2, 29}));
    EXPECT_FALSE(IsValid({2023, 2, 29}));
    EXPECT_FALSE(IsValid({1900, 2, 29}));
    EXPECT_FALSE(IsValid({2024, 4, 31}));
    EXPECT_FALSE(IsValid({2024, 13, 1}));
    EXPECT_FALSE(IsValid({2024, 0, 1}));
    EXPECT_FALSE(IsValid({2024, 1, 0}));
    EXPECT_FALSE(IsValid({0, 1, 1}));
    EXPECT_FALSE(IsValid({10000, 1, 1}));
}

TEST(Calendar, GoesToAutomationDatesAndBack) {
    EXPECT_DOUBLE_EQ(ToAutomationDate(2440588, 0), 25569.0);
    EXPECT_DOUBLE_EQ(ToAutomationDate(2440588, 43'200'000), 25569.5);
    EXPECT_DOUBLE_EQ(ToAutomationDate(kAutomationEpoch, 21'600'000), 0.25);
    std::int32_t day = 0;
    std::int32_t milliseconds = 0;
    for (const std::int32_t expectedDay : {1721426, 2415018, 2415019, 2415020, 2440588, 5373484}) {
        for (const std::int32_t expected : {0, 1, 43'200'000, 86'399'999}) {
            FromAutomationDate(ToAutomationDate(expectedDay, expected), day, milliseconds);
            EXPECT_EQ(day, expectedDay) << expected;
            EXPECT_EQ(milliseconds, expected) << expectedDay;
        }
    }
}

TEST(Calendar, TakesTheFractionOfNegativeAutomationDatesAsTimeOfDay) {
    // Minus 1.25 is six in the morning of the day before the first.
    EXPECT_DOUBLE_EQ(ToAutomationDate(kAutomationEpoch - 1, 21'600'000), -1.25);
    std::int32_t day = 0;
    std::int32_t milliseconds = 0;
    FromAutomationDate(-1.25, day, milliseconds);
    EXPECT_EQ(day, kAutomationEpoch - 1);
    EXPECT_EQ(milliseconds, 21'600'000);
}

TEST(Calendar, CarriesRoundedMilliseconds) {
    std::int32_t day = 0;
    std::int32_t milliseconds = 0;
    FromAutomationDate(100.9999999999, day, milliseconds);
    EXPECT_EQ(day, kAutomationEpoch + 101);
    EXPECT_EQ(milliseconds, 0);
}

TEST(Calendar, GivesNothingForAutomationDatesOutOfReach) {
    for (const double date :
         {1e300, -1e300, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        std::int32_t day = 7;
        std::int32_t milliseconds = 7;
        FromAutomationDate(date, day, milliseconds);
        EXPECT_EQ(day, 0);
        EXPECT_EQ(milliseconds, 0);
    }
}

}  // namespace
}  // namespace zu::calendar
