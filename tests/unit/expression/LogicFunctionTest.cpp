#include <gtest/gtest.h>

#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(LogicFunction, TellsWhatIsEmpty) {
    EXPECT_EQ(Shown(u"EMPTY(SPACE(5))"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY(CHR(9) + CHR(13) + CHR(10) + CHR(0))"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY('x')"), "FALSE");
    EXPECT_EQ(Shown(u"EMPTY(0)"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY(DISCOUNT)"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY(.F.)"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY(CHECKED)"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY({})"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY(ORDERED)"), "FALSE");
    EXPECT_EQ(Shown(u"EMPTY(NULL)"), "FALSE");
}

TEST(LogicFunction, TellsWhatIsBlank) {
    EXPECT_EQ(Shown(u"ISBLANK(DISCOUNT)"), "TRUE");
    EXPECT_EQ(Shown(u"ISBLANK(AMOUNT)"), "FALSE");
    EXPECT_EQ(Shown(u"ISBLANK(SHIPPED)"), "TRUE");
    EXPECT_EQ(Shown(u"ISBLANK(CHECKED)"), "TRUE");
    EXPECT_EQ(Shown(u"ISBLANK(REGION)"), "FALSE");
    EXPECT_EQ(Shown(u"ISBLANK('  ')"), "TRUE");
    EXPECT_EQ(Shown(u"ISBLANK({})"), "TRUE");
    EXPECT_EQ(Shown(u"ISBLANK(0)"), "FALSE");
}

TEST(LogicFunction, ReplacesNull) {
    EXPECT_EQ(Shown(u"NVL(REGION, 'x')"), "\"x\"");
    EXPECT_EQ(Shown(u"NVL(COUNTRY, 'x')"), "\"DE\"");
    EXPECT_EQ(Shown(u"NVL(SHIPPED, ORDERED)"), "2024-01-31");
    EXPECT_EQ(Shown(u"NVL(CHECKED, .T.)"), "TRUE");
    EXPECT_EQ(Shown(u"NVL(1/0, 5)"), "5");
}

TEST(LogicFunction, ChoosesByConditions) {
    EXPECT_EQ(Shown(u"IIF(PAID, 1, 2)"), "1");
    EXPECT_EQ(Shown(u"IIF(NULL, 1, 2)"), "2");
    EXPECT_EQ(Shown(u"IIF(PAID, NULL, 2)"), "NULL");
    EXPECT_EQ(Shown(u"ICASE(.F., 1, .T., 2, 3)"), "2");
    EXPECT_EQ(Shown(u"ICASE(.F., 1, NULL, 2)"), "NULL");
    EXPECT_EQ(Shown(u"ICASE(.F., 1, .F., 2, 3)"), "3");
    EXPECT_EQ(Shown(u"IIF(PAID, ORDERED, STAMP)"), "2024-01-31");
}

TEST(LogicFunction, FindsExtremes) {
    EXPECT_EQ(Shown(u"MIN(ID, QTY, 100)"), "7");
    EXPECT_EQ(Shown(u"MAX('a', 'c', 'b')"), "\"c\"");
    EXPECT_EQ(Shown(u"MIN(ORDERED, {2020-01-01})"), "2020-01-01");
    EXPECT_EQ(Shown(u"MAX(ORDERED, STAMP)"), "2024-01-31 13:45:30.000");
    EXPECT_EQ(Shown(u"MIN(ORDERED, STAMP)"), "2024-01-31 00:00:00.000");
    EXPECT_EQ(Shown(u"MAX(1, NULL)"), "NULL");
    EXPECT_EQ(Shown(u"MAX(.F., .T.)"), "TRUE");
}

TEST(LogicFunction, ComputesNumbers) {
    EXPECT_EQ(Shown(u"ABS(-2.5)"), "2.5");
    EXPECT_EQ(Shown(u"INT(-2.5)"), "-2");
    EXPECT_EQ(Shown(u"FLOOR(-2.5)"), "-3");
    EXPECT_EQ(Shown(u"CEILING(-2.5)"), "-2");
    EXPECT_EQ(Shown(u"ROUND(-2.5)"), "-3");
    EXPECT_EQ(Shown(u"ROUND(AMOUNT, 1e300)"), "1234.5");
    EXPECT_EQ(Shown(u"MOD(-5, 3)"), "1");
    EXPECT_EQ(Shown(u"MOD(5, 0)"), "NULL");
    EXPECT_EQ(Shown(u"LOG(-1)"), "NULL");
    EXPECT_EQ(Shown(u"EXP(1000)"), "NULL");
    EXPECT_EQ(Shown(u"SIGN(0)"), "0");
}

TEST(LogicFunction, KnowsTheRecord) {
    RecordBuilder builder = SampleRecord();
    const Program deleted = Program::Compile(u"DELETED()", builder.layout);
    const Program number = Program::Compile(u"RECNO()", builder.layout);
    EXPECT_FALSE(deleted.Test(builder.row(3)));
    builder.SetDeleted(true);
    EXPECT_TRUE(deleted.Test(builder.row(3)));
    Result result;
    number.Evaluate(builder.row(4000000000U), result);
    EXPECT_EQ(result.number, 4000000000.0);
}

}  // namespace
}  // namespace zu::expression::testing
