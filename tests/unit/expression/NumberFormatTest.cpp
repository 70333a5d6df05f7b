#include "host/expression/NumberFormat.h"

#include <gtest/gtest.h>

#include <cmath>

#include "host/expression/Picture.h"

namespace zu::expression {
namespace {

std::string Str(double value, std::size_t width, std::size_t decimals, char fill = ' ') {
    std::string out = "<";
    AppendStr(value, width, decimals, fill, out);
    return out + ">";
}

TEST(NumberFormat, JustifiesToTheRight) {
    EXPECT_EQ(Str(42, 5, 0), "<   42>");
    EXPECT_EQ(Str(-42, 5, 0), "<  -42>");
    EXPECT_EQ(Str(0, 3, 0), "<  0>");
    EXPECT_EQ(Str(1.5, 6, 2), "<  1.50>");
    EXPECT_EQ(Str(0, 0, 0), "<>");
}

TEST(NumberFormat, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(Str(2.5, 3, 0), "<  3>");
    EXPECT_EQ(Str(-2.5, 3, 0), "< -3>");
    EXPECT_EQ(Str(1.005, 5, 2), "< 1.01>");
    EXPECT_EQ(Str(0.49999, 3, 0), "<  0>");
}

TEST(NumberFormat, GivesUpDecimalsBeforeItGivesUpTheNumber) {
    EXPECT_EQ(Str(123.456, 5, 2), "<123.5>");
    EXPECT_EQ(Str(123.456, 3, 2), "<123>");
    EXPECT_EQ(Str(9.96, 3, 2), "< 10>");
    EXPECT_EQ(Str(123.456, 2, 2), "<**>");
    EXPECT_EQ(Str(1e20, 10, 0), "<**********>");
}

TEST(NumberFormat, FillsWithZerosBehindTheSign) {
    EXPECT_EQ(Str(42, 5, 0, '0'), "<00042>");
    EXPECT_EQ(Str(-42, 5, 0, '0'), "<-0042>");
    EXPECT_EQ(Str(-1.5, 7, 2, '0'), "<-001.50>");
    EXPECT_EQ(Str(1.5, 7, 2, '0'), "<0001.50>");
}

TEST(NumberFormat, RoundsAtAnyPlace) {
    EXPECT_EQ(RoundDecimal(2.345, 2), 2.35);
    EXPECT_EQ(RoundDecimal(1.005, 2), 1.01);
    EXPECT_EQ(RoundDecimal(-1.005, 2), -1.01);
    EXPECT_EQ(RoundDecimal(1250, -2), 1300);
    EXPECT_EQ(RoundDecimal(49, -2), 0);
    EXPECT_EQ(RoundDecimal(50, -2), 100);
    EXPECT_EQ(RoundDecimal(0.5, 0), 1);
    EXPECT_EQ(RoundDecimal(0.04, 0), 0);
    EXPECT_EQ(RoundDecimal(9.995, 2), 10);
    EXPECT_EQ(RoundDecimal(1e300, 2), 1e300);
    EXPECT_EQ(RoundDecimal(1e-300, 300), 1e-300);
    EXPECT_EQ(RoundDecimal(0, 3), 0);
    EXPECT_EQ(RoundDecimal(123.456, 10), 123.456);
    EXPECT_TRUE(std::isinf(RoundDecimal(INFINITY, 2)));
}

std::string Shortest(double value) {
    std::string out;
    AppendShortest(value, out);
    return out;
}

TEST(NumberFormat, WritesTheShortestTextThatReadsBack) {
    EXPECT_EQ(Shortest(0.1), "0.1");
    EXPECT_EQ(Shortest(1000000), "1000000");
    EXPECT_EQ(Shortest(-0.0), "0");
    EXPECT_EQ(Shortest(1e15), "1e+15");
    EXPECT_EQ(Shortest(0.000001), "0.000001");
    EXPECT_EQ(Shortest(1e-7), "1e-07");
}

std::string NumberPicture(double value, std::string_view picture) {
    std::string out;
    AppendNumberPicture(value, picture, out);
    return out;
}

TEST(NumberFormat, FollowsPictures) {
    EXPECT_EQ(NumberPicture(1234567.891, "9,999,999.99"), "1,234,567.89");
    EXPECT_EQ(NumberPicture(12.5, "9,999.99"), "   12.50");
    EXPECT_EQ(NumberPicture(-5, "999"), " -5");
    EXPECT_EQ(NumberPicture(-1234, "99,999"), "-1,234");
    EXPECT_EQ(NumberPicture(12345, "999"), "***");
    EXPECT_EQ(NumberPicture(5, "@L 999"), "005");
    EXPECT_EQ(NumberPicture(0, "@Z 999"), "   ");
    EXPECT_EQ(NumberPicture(5, "$**9"), "$**5");
    EXPECT_EQ(NumberPicture(5, "99 EUR"), " 5 EUR");
    EXPECT_EQ(NumberPicture(1.5, "@"), "1.5");
}

std::string TextPicture(std::string_view text, std::string_view picture) {
    std::string out;
    AppendTextPicture(text, picture, out);
    return out;
}

TEST(NumberFormat, FollowsPicturesForTexts) {
    EXPECT_EQ(TextPicture("abc", "@!"), "ABC");
    EXPECT_EQ(TextPicture("abc", "!XX"), "Abc");
    EXPECT_EQ(TextPicture("12345", "999-99"), "123-45");
    EXPECT_EQ(TextPicture("1", "99"), "1 ");
}

}  // namespace
}  // namespace zu::expression
