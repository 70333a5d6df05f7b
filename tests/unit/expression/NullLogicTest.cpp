#include <gtest/gtest.h>

#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(NullLogic, FollowsThreeValuesInAnd) {
    EXPECT_EQ(Shown(u".T. AND NULL"), "NULL");
    EXPECT_EQ(Shown(u"NULL AND .T."), "NULL");
    EXPECT_EQ(Shown(u".F. AND NULL"), "FALSE");
    EXPECT_EQ(Shown(u"NULL AND .F."), "FALSE");
    EXPECT_EQ(Shown(u"NULL AND NULL AND .F."), "FALSE");
    EXPECT_EQ(Shown(u"NULL AND .T. AND .T."), "NULL");
    EXPECT_EQ(Shown(u".T. AND NULL AND .T."), "NULL");
    EXPECT_EQ(Shown(u".T. AND .T."), "TRUE");
}

TEST(NullLogic, FollowsThreeValuesInOr) {
    EXPECT_EQ(Shown(u".T. OR NULL"), "TRUE");
    EXPECT_EQ(Shown(u"NULL OR .T."), "TRUE");
    EXPECT_EQ(Shown(u".F. OR NULL"), "NULL");
    EXPECT_EQ(Shown(u"NULL OR .F. OR .F."), "NULL");
    EXPECT_EQ(Shown(u"NULL OR .F. OR .T."), "TRUE");
    EXPECT_EQ(Shown(u".F. OR .F."), "FALSE");
}

TEST(NullLogic, LeavesNotNullOpen) {
    EXPECT_EQ(Shown(u"NOT NULL"), "NULL");
    EXPECT_EQ(Shown(u"NOT (REGION = 'x')"), "NULL");
}

TEST(NullLogic, CarriesNullThroughComputations) {
    EXPECT_EQ(Shown(u"1 + NULL"), "NULL");
    EXPECT_EQ(Shown(u"UPPER(REGION)"), "NULL");
    EXPECT_EQ(Shown(u"REGION + 'x'"), "NULL");
    EXPECT_EQ(Shown(u"REGION LIKE '%'"), "NULL");
    EXPECT_EQ(Shown(u"REGION $ 'x'"), "NULL");
    EXPECT_EQ(Shown(u"SHIPPED + 1"), "NULL");
    EXPECT_EQ(Shown(u"-(1/0)"), "NULL");
}

TEST(NullLogic, MakesNumbersWithoutAValueNull) {
    EXPECT_EQ(Shown(u"1/0"), "NULL");
    EXPECT_EQ(Shown(u"AMOUNT % (ID - 42)"), "NULL");
    EXPECT_EQ(Shown(u"10 ^ 400"), "NULL");
    EXPECT_EQ(Shown(u"1e308 * 10"), "NULL");
    EXPECT_EQ(Shown(u"SQRT(-1)"), "NULL");
}

TEST(NullLogic, DoesNotSelectRecordsForNull) {
    EXPECT_FALSE(IsTrue(u"REGION = 'x'"));
    EXPECT_FALSE(IsTrue(u"REGION <> 'x'"));
    EXPECT_FALSE(IsTrue(u"NOT (REGION = 'x')"));
    EXPECT_TRUE(IsTrue(u"REGION IS NULL"));
    EXPECT_FALSE(IsTrue(u"REGION LIKE '%'"));
}

TEST(NullLogic, TellsBlankDatesFromNull) {
    const Result blank = Value(u"SHIPPED");
    EXPECT_TRUE(blank.isNull);
    EXPECT_TRUE(blank.isEmpty);
    EXPECT_EQ(blank.type, Type::Date);
    const Result null = Value(u"REGION");
    EXPECT_TRUE(null.isNull);
    EXPECT_FALSE(null.isEmpty);
    EXPECT_EQ(null.type, Type::Text);
    EXPECT_EQ(Shown(u"SHIPPED IS NULL"), "TRUE");
    EXPECT_EQ(Shown(u"EMPTY(REGION)"), "FALSE");
    EXPECT_EQ(Shown(u"EMPTY(SHIPPED)"), "TRUE");
}

TEST(NullLogic, ReadsLogicalsThatAreNotInitialisedAsFalse) {
    EXPECT_EQ(Shown(u"CHECKED"), "EMPTY");
    EXPECT_EQ(Shown(u"CHECKED IS NULL"), "TRUE");
    EXPECT_FALSE(IsTrue(u"CHECKED"));
    EXPECT_TRUE(IsTrue(u"NOT CHECKED"));
    EXPECT_TRUE(IsTrue(u"CHECKED = .F."));
    EXPECT_TRUE(IsTrue(u"CHECKED <> .T."));
    EXPECT_TRUE(IsTrue(u"IIF(CHECKED, .F., .T.)"));
    EXPECT_TRUE(IsTrue(u"(CHECKED OR .T.) AND NOT (CHECKED AND .T.)"));
}

TEST(NullLogic, ReadsBlankNumbersAsZero) {
    EXPECT_EQ(Shown(u"DISCOUNT"), "0");
    EXPECT_EQ(Shown(u"DISCOUNT IS NULL"), "FALSE");
    EXPECT_EQ(Shown(u"ISBLANK(DISCOUNT)"), "TRUE");
}

TEST(NullLogic, DecidesBetweenByTheBoundThatIsKnown) {
    EXPECT_EQ(Shown(u"5 BETWEEN 1 AND NULL"), "NULL");
    EXPECT_EQ(Shown(u"5 BETWEEN 6 AND NULL"), "FALSE");
    EXPECT_EQ(Shown(u"5 BETWEEN NULL AND 4"), "FALSE");
    EXPECT_EQ(Shown(u"NULL BETWEEN 1 AND 2"), "NULL");
    EXPECT_EQ(Shown(u"ID BETWEEN 1 AND NULL"), "NULL");
}

TEST(NullLogic, LeavesInOpenWhenNullIsInTheList) {
    EXPECT_EQ(Shown(u"5 IN (1, NULL)"), "NULL");
    EXPECT_EQ(Shown(u"5 IN (5, NULL)"), "TRUE");
    EXPECT_EQ(Shown(u"5 NOT IN (1, NULL)"), "NULL");
    EXPECT_EQ(Shown(u"NULL IN (1)"), "NULL");
}

}  // namespace
}  // namespace zu::expression::testing
