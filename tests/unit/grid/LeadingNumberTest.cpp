#include "portable/grid/LeadingNumber.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zu::grid {
namespace {

double Value(std::u16string_view text) {
    return ReadLeadingNumber(text).value;
}

TEST(LeadingNumber, ReadsDigitsAndIgnoresWhatFollows) {
    EXPECT_EQ(Value(u"12 apples"), 12);
    EXPECT_EQ(Value(u"-3.75x9"), -3.75);
    EXPECT_EQ(Value(u"+.5"), 0.5);
    EXPECT_EQ(Value(u"7."), 7);
    EXPECT_EQ(Value(u"1.2.3"), 1.2);
    EXPECT_EQ(Value(u"1,5"), 1);
}

TEST(LeadingNumber, ATextWithoutANumberIsZero) {
    EXPECT_EQ(Value(u""), 0);
    EXPECT_EQ(Value(u"apples 12"), 0);
    EXPECT_EQ(Value(u"-"), 0);
    EXPECT_EQ(Value(u"."), 0);
    EXPECT_EQ(Value(u"e5"), 0);
    EXPECT_EQ(Value(u"\u0661"), 0);
}

TEST(LeadingNumber, BlanksArePassedOverAnywhere) {
    EXPECT_EQ(Value(u"  1 234 . 5 "), 1234.5);
    EXPECT_EQ(Value(u"\t- 7\r\n"), -7);
}

TEST(LeadingNumber, ExponentsBelongToTheNumberWhenTheyHaveDigits) {
    EXPECT_EQ(Value(u"1.5e3"), 1500);
    EXPECT_EQ(Value(u"1.5D-1"), 0.15);
    EXPECT_EQ(Value(u"2e"), 2);
    EXPECT_EQ(Value(u"2e+x"), 2);
}

TEST(LeadingNumber, HexadecimalAndOctalDigitsFollowTheirMarks) {
    EXPECT_EQ(Value(u"&HfF"), 255);
    EXPECT_EQ(Value(u"&o17"), 15);
    EXPECT_EQ(Value(u"&Q1"), 0);
}

TEST(LeadingNumber, NumbersBeyondADoubleAreInfiniteOrZero) {
    EXPECT_TRUE(std::isinf(Value(u"1e999")));
    EXPECT_EQ(Value(u"-1e999"), -HUGE_VAL);
    EXPECT_EQ(Value(u"1e-999"), 0);
    EXPECT_TRUE(std::isinf(Value(std::u16string(400, u'9'))));
}

TEST(LeadingNumber, TellsWhetherTheTextWasANumberAsAWhole) {
    EXPECT_TRUE(ReadLeadingNumber(u" 12.5 ").whole);
    EXPECT_TRUE(ReadLeadingNumber(u"&H10").whole);
    EXPECT_FALSE(ReadLeadingNumber(u"12 apples").whole);
    EXPECT_FALSE(ReadLeadingNumber(u"").whole);
    EXPECT_FALSE(ReadLeadingNumber(u"abc").whole);
    EXPECT_FALSE(ReadLeadingNumber(u"&Hxyz").whole);
}

}  // namespace
}  // namespace zu::grid
