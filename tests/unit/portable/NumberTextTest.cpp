#include "portable/text/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

namespace zu::text {
namespace {

DecimalDigits Decimal(std::string_view bytes, NumberForm form = NumberForm::Number) {
    DecimalDigits digits;
    EXPECT_EQ(ParseDecimal(bytes, digits), form) << bytes;
    return digits;
}

double Number(std::string_view bytes, NumberForm form = NumberForm::Number) {
    double number = 99;
    EXPECT_EQ(ParseNumber(bytes, number), form) << bytes;
    return number;
}

std::string Units(std::int64_t units, unsigned width, unsigned decimals) {
    std::string text(width, '#');
    return PrintUnits(units, width, decimals, text.data()) ? text : "(no)" + text;
}

std::string Printed(double value, unsigned width, unsigned decimals) {
    std::string text(width, '#');
    return PrintNumber(value, width, decimals, text.data()) ? text : "(no)" + text;
}

TEST(NumberText, ReadsPlainNumbersExactly) {
    EXPECT_EQ(Decimal("  12.50"), (DecimalDigits{1250, 0, 2, false}));
    EXPECT_EQ(Decimal(" -7"), (DecimalDigits{7, 0, 0, true}));
    EXPECT_EQ(Decimal("0.05"), (DecimalDigits{5, 0, 2, false}));
    EXPECT_EQ(Decimal("12345678901234567890"), (DecimalDigits{12345678901234567890ULL, 0, 0, false}));
    EXPECT_EQ(Number("  12.50"), 12.5);
    EXPECT_EQ(Number(" -7"), -7);
    EXPECT_EQ(Number("12345678901234567890"), 12345678901234567890.0);
}

TEST(NumberText, ReadsTheDirtyFormsOfRealFiles) {
    EXPECT_EQ(Number("5  "), 5);                              // left-justified
    EXPECT_EQ(Number(std::string_view("\0\0 12\0", 6)), 12);  // NULs
    EXPECT_EQ(Number(" 3,25"), 3.25);                         // comma
    EXPECT_EQ(Number(" 1.5e+03"), 1500);                      // exponent
    EXPECT_EQ(Number("1E-2"), 0.01);
    EXPECT_EQ(Number("00012"), 12);  // zeros in front
    EXPECT_EQ(Number("+4"), 4);
    EXPECT_EQ(Number("- 4"), -4);
    EXPECT_EQ(Number(".5"), 0.5);
    EXPECT_EQ(Number("5."), 5);
    EXPECT_EQ(Decimal(" 3,25"), (DecimalDigits{325, 0, 2, false}));
    EXPECT_EQ(Decimal("1.5e+03"), (DecimalDigits{1500, 0, 0, false}));
    EXPECT_EQ(Decimal("1.5e-3"), (DecimalDigits{15, 0, 4, false}));
}

TEST(NumberText, TellsBlankFromUnreadable) {
    const std::string_view blanks[] = {"", "     ", ".", "-", " - ", std::string_view("\0\0\0", 3)};
    for (const std::string_view blank : blanks) {
        EXPECT_EQ(Number(blank, NumberForm::Blank), 0);
        EXPECT_EQ(Decimal(blank, NumberForm::Blank), DecimalDigits{});
    }
    const std::string_view faults[] = {"****", "12A", "A",    "1.2.3", "1 2", "1e", "1e+",
                                       "e5",   "--5", "0x10", "1,2,3", "NaN", "inf"};
    for (const std::string_view fault : faults) {
        EXPECT_EQ(Number(fault, NumberForm::Unreadable), 0) << fault;
        EXPECT_EQ(Decimal(fault, NumberForm::Unreadable), DecimalDigits{}) << fault;
    }
}

TEST(NumberText, KnowsNoNegativeZero) {
    EXPECT_FALSE(Decimal("-0").negative);
    EXPECT_FALSE(Decimal("-0.00").negative);
    EXPECT_FALSE(std::signbit(Number("-0")));
    EXPECT_FALSE(std::signbit(Number("-0e5")));
}

TEST(NumberText, KeepsNinetySixBits) {
    EXPECT_EQ(Decimal("79228162514264337593543950335"),
              (DecimalDigits{0xFFFFFFFFFFFFFFFFULL, 0xFFFFFFFFU, 0, false}));
    Decimal("79228162514264337593543950336", NumberForm::Unreadable);
    Decimal("1e29", NumberForm::Unreadable);
    EXPECT_EQ(Decimal("0.0000000000000000000000000001"), (DecimalDigits{1, 0, 28, false}));
    EXPECT_EQ(Decimal("0.00000000000000000000000000005"), (DecimalDigits{1, 0, 28, false}));
    EXPECT_EQ(Decimal("0.00000000000000000000000000004"), DecimalDigits{});
    EXPECT_EQ(Decimal("1e-400"), DecimalDigits{});
}

TEST(NumberText, RoundsDigitsBeyondNinetySixBits) {
    const DecimalDigits digits = Decimal("99999999999.999999999999999999999");
    EXPECT_LE(digits.scale, 28);
    EXPECT_DOUBLE_EQ(ToDouble(digits), 1e11);
}

TEST(NumberText, ReadsDoublesAsTheRunTimeDoes) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 20000; ++round) {
        const std::uint64_t units = random() >> (random() % 60);
        const unsigned decimals = static_cast<unsigned>(random() % 15);
        char text[64];
        std::snprintf(text, sizeof text, "%s%llu", random() % 2 ? "-" : "",
                      static_cast<unsigned long long>(units));
        std::string number = text;
        const std::size_t digits = number.size() - (number[0] == '-' ? 1 : 0);
        if (decimals > 0 && decimals < digits) number.insert(number.size() - decimals, ".");
        EXPECT_EQ(Number(number), std::strtod(number.c_str(), nullptr)) << number;
        DecimalDigits decimal;
        ASSERT_EQ(ParseDecimal(number, decimal), NumberForm::Number);
        EXPECT_EQ(ToDouble(decimal), std::strtod(number.c_str(), nullptr)) << number;
    }
}

TEST(NumberText, ReadsNumbersOutOfRangeAsUnreadableOrZero) {
    Number("1e999", NumberForm::Unreadable);
    EXPECT_EQ(Number("1e-999"), 0);
    EXPECT_EQ(Number("1e308"), 1e308);
}

TEST(NumberText, SurvivesTextsLongerThanAnyField) {
    double number = 1;
    EXPECT_EQ(ParseNumber(std::string(100000, '9'), number), NumberForm::Unreadable);
    DecimalDigits digits;
    EXPECT_EQ(ParseDecimal(std::string(100000, '9'), digits), NumberForm::Unreadable);
    EXPECT_EQ(ParseDecimal(std::string(255, '0'), digits), NumberForm::Number);
}

TEST(NumberText, PrintsUnitsRightJustified) {
    EXPECT_EQ(Units(1250, 8, 2), "   12.50");
    EXPECT_EQ(Units(-5, 6, 2), " -0.05");
    EXPECT_EQ(Units(0, 4, 0), "   0");
    EXPECT_EQ(Units(std::numeric_limits<std::int64_t>::min(), 20, 0), "-9223372036854775808");
    EXPECT_EQ(Units(50, 3, 2), ".50");  // the zero gives way
    EXPECT_EQ(Units(-50, 4, 2), "-.50");
    EXPECT_EQ(Units(50, 2, 2), "(no)##");
    EXPECT_EQ(Units(12345, 4, 0), "(no)####");
}

TEST(NumberText, PrintsNumbersRoundedHalfAwayFromZero) {
    EXPECT_EQ(Printed(12.5, 8, 2), "   12.50");
    EXPECT_EQ(Printed(1.005, 5, 2), " 1.01");
    EXPECT_EQ(Printed(-2.5, 4, 0), "  -3");
    EXPECT_EQ(Printed(2.5, 4, 0), "   3");
    EXPECT_EQ(Printed(9.999, 6, 2), " 10.00");
    EXPECT_EQ(Printed(999.5, 4, 0), "1000");
    EXPECT_EQ(Printed(-0.001, 5, 2), " 0.00");
    EXPECT_EQ(Printed(0.5, 3, 2), ".50");
    EXPECT_EQ(Printed(1e20, 21, 0), "100000000000000000000");
    EXPECT_EQ(Printed(0.1, 20, 17), " 0.10000000000000000");
    EXPECT_EQ(Printed(1e20, 20, 0), "(no)####################");
    EXPECT_EQ(Printed(1e300, 20, 2), "(no)####################");
    EXPECT_EQ(Printed(std::numeric_limits<double>::infinity(), 5, 0), "(no)#####");
    EXPECT_EQ(Printed(std::nan(""), 5, 0), "(no)#####");
}

TEST(NumberText, ReadsBackWhatItPrints) {
    std::mt19937_64 random(11);
    for (int round = 0; round < 5000; ++round) {
        const auto units = static_cast<std::int64_t>(random()) >> (random() % 63);
        const unsigned decimals = static_cast<unsigned>(random() % 10);
        const std::string text = Units(units, 24, decimals);
        DecimalDigits digits;
        ASSERT_EQ(ParseDecimal(text, digits), NumberForm::Number) << text;
        const std::uint64_t magnitude =
            units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units);
        EXPECT_EQ(digits.low, magnitude);
        EXPECT_EQ(digits.scale, decimals);
        EXPECT_EQ(digits.negative, units < 0);
    }
}

}  // namespace
}  // namespace zu::text
