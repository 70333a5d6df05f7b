#include <gtest/gtest.h>

#include "host/expression/Clock.h"
#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(DateFunction, TakesDatesApart) {
    EXPECT_EQ(Shown(u"YEAR(STAMP) * 10000 + MONTH(STAMP) * 100 + DAY(STAMP)"), "20240131");
    EXPECT_EQ(Shown(u"HOUR(STAMP) * 10000 + MINUTE(STAMP) * 100 + SEC(STAMP)"), "134530");
    EXPECT_EQ(Shown(u"HOUR(ORDERED)"), "0");
    EXPECT_EQ(Shown(u"QUARTER({2024-03-31})"), "1");
    EXPECT_EQ(Shown(u"QUARTER({2024-04-01})"), "2");
    EXPECT_EQ(Shown(u"QUARTER({2024-12-31})"), "4");
}

TEST(DateFunction, GivesZeroForThePartsOfABlankDate) {
    EXPECT_EQ(Shown(u"YEAR(SHIPPED)"), "0");
    EXPECT_EQ(Shown(u"DOW(SHIPPED)"), "0");
    EXPECT_EQ(Shown(u"CDOW(SHIPPED)"), "\"\"");
    EXPECT_EQ(Shown(u"CMONTH({})"), "\"\"");
    EXPECT_EQ(Shown(u"YEAR(NULL)"), "NULL");
    EXPECT_EQ(Shown(u"GOMONTH(SHIPPED, 1)"), "NULL");
}

TEST(DateFunction, KnowsTheWeek) {
    EXPECT_EQ(Shown(u"DOW({2024-02-04})"), "1");
    EXPECT_EQ(Shown(u"DOW({2024-02-03})"), "7");
    EXPECT_EQ(Shown(u"CDOW({2000-01-01})"), "\"Saturday\"");
    EXPECT_EQ(Shown(u"CMONTH({2000-09-01})"), "\"September\"");
    EXPECT_EQ(Shown(u"WEEK({2024-01-01})"), "1");
    EXPECT_EQ(Shown(u"WEEK({2024-01-06})"), "1");
    EXPECT_EQ(Shown(u"WEEK({2024-01-07})"), "2");
    EXPECT_EQ(Shown(u"WEEK({2022-12-31})"), "53");
}

TEST(DateFunction, GoesByMonths) {
    EXPECT_EQ(Shown(u"GOMONTH({2024-01-31}, 1)"), "2024-02-29");
    EXPECT_EQ(Shown(u"GOMONTH({2024-01-31}, -11)"), "2023-02-28");
    EXPECT_EQ(Shown(u"GOMONTH({2024-01-15}, 12)"), "2025-01-15");
    EXPECT_EQ(Shown(u"GOMONTH({0001-01-15}, -1)"), "NULL");
    EXPECT_EQ(Shown(u"GOMONTH({9999-12-15}, 1)"), "NULL");
    EXPECT_EQ(Shown(u"GOMONTH({2024-01-15}, 1e300)"), "NULL");
    EXPECT_EQ(Shown(u"EOMONTH({2023-02-01})"), "2023-02-28");
    EXPECT_EQ(Shown(u"EOMONTH({2024-01-31}, 3)"), "2024-04-30");
}

TEST(DateFunction, MakesDatesOfParts) {
    EXPECT_EQ(Shown(u"DATE(2024, 2, 29)"), "2024-02-29");
    EXPECT_EQ(Shown(u"DATE(2023, 2, 29)"), "NULL");
    EXPECT_EQ(Shown(u"DATE(-1, 2, 3)"), "NULL");
    EXPECT_EQ(Shown(u"DATE(1e300, 2, 3)"), "NULL");
    EXPECT_EQ(Shown(u"DATETIME(2024, 2, 29)"), "2024-02-29 00:00:00.000");
    EXPECT_EQ(Shown(u"DATETIME(2024, 2, 29, 23, 59, 59)"), "2024-02-29 23:59:59.000");
    EXPECT_EQ(Shown(u"DATETIME(2024, 2, 29, 24)"), "NULL");
    EXPECT_EQ(Shown(u"DATE(2024, 2)"), "expected 0 arguments for DATE, found 2 (character 1)");
}

TEST(DateFunction, TakesTheTimeOfCompiling) {
    const std::int32_t before = LocalNow().julianDay;
    const Result today = Value(u"DATE()");
    const std::int32_t after = LocalNow().julianDay;
    EXPECT_TRUE(today.julianDay >= before && today.julianDay <= after);
    EXPECT_EQ(Value(u"DATETIME()").type, Type::DateTime);
    EXPECT_EQ(Value(u"TIME()").text.size(), 8U);
}

TEST(DateFunction, ConvertsBetweenDaysAndMoments) {
    EXPECT_EQ(Shown(u"TTOD(STAMP)"), "2024-01-31");
    EXPECT_EQ(Shown(u"DTOT(ORDERED)"), "2024-01-31 00:00:00.000");
    EXPECT_EQ(Shown(u"TTOD({})"), "EMPTY");
    EXPECT_EQ(Shown(u"DTOT(SHIPPED)"), "EMPTY");
}

}  // namespace
}  // namespace zu::expression::testing
