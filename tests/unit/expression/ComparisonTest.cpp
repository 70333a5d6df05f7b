#include "host/expression/Comparison.h"

#include <gtest/gtest.h>

#include "tests/unit/expression/RecordBuilder.h"

namespace zu::expression::testing {
namespace {

TEST(Comparison, IgnoresBlanksAndNulsAtTheEnd) {
    EXPECT_EQ(CompareTexts("ab", "ab   "), 0);
    EXPECT_EQ(CompareTexts(std::string_view("ab\0\0", 4), "ab "), 0);
    EXPECT_EQ(CompareTexts("", "   "), 0);
    EXPECT_NE(CompareTexts(" ab", "ab"), 0);
}

TEST(Comparison, OrdersAsIfTheShorterTextWereFilledWithBlanks) {
    EXPECT_LT(CompareTexts("ab", "abc"), 0);
    EXPECT_GT(CompareTexts("ab", "ab\x01"), 0);
    EXPECT_LT(CompareTexts("ab\x01", "ab"), 0);
    EXPECT_LT(CompareTexts("Z", "a"), 0);
    EXPECT_GT(CompareTexts("\xE4", "z"), 0);
}

TEST(Comparison, TakesNoBeginningForTheWhole) {
    EXPECT_EQ(Shown(u"CUSTOMER = 'Mill'"), "FALSE");
    EXPECT_EQ(Shown(u"CUSTOMER == 'Miller & Sons  '"), "TRUE");
    EXPECT_EQ(Shown(u"CUSTOMER = 'Miller & Sons, and a text that is far longer than the field is wide'"),
              "FALSE");
    EXPECT_EQ(Shown(u"CUSTOMER <> 'Miller & Sons, and a text that is far longer than the field is wide'"),
              "TRUE");
}

TEST(Comparison, NeverFindsCharactersThatTheTableCannotHold) {
    EXPECT_EQ(Shown(u"CUSTOMER = 'Ω'"), "FALSE");
    EXPECT_EQ(Shown(u"CUSTOMER <> 'Ω'"), "TRUE");
    EXPECT_EQ(Shown(u"'Ω' = 'Ж'"), "FALSE");
    EXPECT_EQ(Shown(u"CUSTOMER IN ('Ω', 'Ж')"), "FALSE");
    EXPECT_EQ(Shown(u"'Ω' $ CUSTOMER"), "FALSE");
    EXPECT_EQ(Shown(u"CUSTOMER LIKE 'Ω%'"), "FALSE");
    EXPECT_EQ(Shown(u"UPPER(CUSTOMER) = UPPER('Ω')"), "FALSE");
    EXPECT_EQ(Shown(u"CUSTOMER BETWEEN 'Ω' AND 'Ω'"), "FALSE");
}

TEST(Comparison, ComparesDigitsExactlyBeyondWhatDoublesHold) {
    RecordBuilder builder;
    builder.Add("N", Storage::NumberText, 18).Add("F", Storage::NumberText, 18, 16).Finish();
    builder.Set("N", "123456789012345678").Set("F", "0.1000000000000001");
    const auto holds = [&](std::u16string_view source) {
        return Program::Compile(source, builder.layout).Test(builder.row());
    };
    EXPECT_TRUE(holds(u"N = 123456789012345678"));
    EXPECT_FALSE(holds(u"N = 123456789012345677"));
    EXPECT_TRUE(holds(u"N > 123456789012345677"));
    EXPECT_TRUE(holds(u"N < 123456789012345678.5"));
    EXPECT_TRUE(holds(u"F > 0.1"));
    EXPECT_TRUE(holds(u"F = 0.1000000000000001"));
    EXPECT_FALSE(holds(u"F = 0.10000000000000010000001"));
    EXPECT_TRUE(holds(u"F BETWEEN 0.1000000000000001 AND 0.1000000000000001"));
}

TEST(Comparison, PutsADateBesideADateTimeAtItsMidnight) {
    EXPECT_EQ(Shown(u"STAMP > ORDERED"), "TRUE");
    EXPECT_EQ(Shown(u"STAMP = ORDERED"), "FALSE");
    EXPECT_EQ(Shown(u"ORDERED = {2024-01-31 00:00:00}"), "TRUE");
    EXPECT_EQ(Shown(u"ORDERED < {2024-01-31 00:00:01}"), "TRUE");
    EXPECT_EQ(Shown(u"ORDERED = {2024-01-31 13:00:00}"), "FALSE");
    EXPECT_EQ(Shown(u"ORDERED >= {2024-01-31 13:00:00}"), "FALSE");
}

TEST(Comparison, OrdersLogicalsWithFalseFirst) {
    EXPECT_EQ(Shown(u".F. < .T."), "TRUE");
    EXPECT_EQ(Shown(u"PAID >= .T."), "TRUE");
}

TEST(Comparison, RefusesDifferentTypesWhenCompiling) {
    EXPECT_EQ(Shown(u"ID = 'x'"),
              "expected a number to compare with the number on the left, found a text (character 6)");
    EXPECT_EQ(Shown(u"ORDERED = 5"),
              "expected a date to compare with the date on the left, found a number (character 11)");
    EXPECT_EQ(Shown(u"PAID = 1"),
              "expected a logical to compare with the logical on the left, found a number (character 8)");
}

TEST(Comparison, TurnsAnOperatorRoundForSwappedSides) {
    EXPECT_EQ(Shown(u"50 > ID"), "TRUE");
    EXPECT_EQ(Shown(u"42 <= ID"), "TRUE");
    EXPECT_EQ(Shown(u"42 < ID"), "FALSE");
    EXPECT_EQ(Shown(u"'N' > CUSTOMER"), "TRUE");
    EXPECT_EQ(Shown(u"{} < ORDERED"), "TRUE");
}

TEST(Comparison, CountsTheEmptyDateOnlyBesideItsLiteral) {
    EXPECT_EQ(Shown(u"SHIPPED = {}"), "TRUE");
    EXPECT_EQ(Shown(u"SHIPPED <> {}"), "FALSE");
    EXPECT_EQ(Shown(u"ORDERED <> {}"), "TRUE");
    EXPECT_EQ(Shown(u"ORDERED > {}"), "TRUE");
    EXPECT_EQ(Shown(u"SHIPPED >= {}"), "TRUE");
    EXPECT_EQ(Shown(u"SHIPPED < ORDERED"), "NULL");
    EXPECT_EQ(Shown(u"NULL = {}"), "NULL");
    EXPECT_EQ(Shown(u"ID = {}"),
              "expected a number to compare with the number on the left, found a date (character 6)");
}

}  // namespace
}  // namespace zu::expression::testing
