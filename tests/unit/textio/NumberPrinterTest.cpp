#include "portable/textio/NumberPrinter.h"

#include <gtest/gtest.h>

#include <limits>

#include "portable/error/Error.h"

namespace zu::textio {
namespace {

std::string General(const Cell& cell) {
    NumberPrinter printer;
    return std::string(printer.General(cell));
}

std::string Masked(const Cell& cell, std::size_t decimals, bool point = false) {
    NumberPrinter printer;
    return std::string(printer.Masked(cell, decimals, point));
}

Cell Double(double value) {
    return Cell::OfNumber(value);
}
Cell Single(float value) {
    return Cell::OfNumber(static_cast<double>(value), Cell::Kind::Single);
}
Cell Currency(std::int64_t units) {
    return Cell::OfInteger(units, Cell::Kind::Currency);
}

TEST(NumberPrinter, ShowsIntegersPlainly) {
    EXPECT_EQ(General(Cell::OfInteger(0)), "0");
    EXPECT_EQ(General(Cell::OfInteger(1234567)), "1234567");
    EXPECT_EQ(General(Cell::OfInteger(-42)), "42");
    EXPECT_EQ(General(Cell::OfInteger(std::numeric_limits<std::int64_t>::min())), "9223372036854775808");
}

TEST(NumberPrinter, DropsZerosBehindThePoint) {
    EXPECT_EQ(General(Cell::OfDecimal(1250, 2)), "12.5");
    EXPECT_EQ(General(Cell::OfDecimal(1200, 2)), "12");
    EXPECT_EQ(General(Cell::OfDecimal(5, 2)), "0.05");
    EXPECT_EQ(General(Cell::OfDecimal(0, 4)), "0");
    EXPECT_EQ(General(Currency(123400)), "12.34");
    EXPECT_EQ(General(Currency(-1)), "0.0001");
}

TEST(NumberPrinter, ShowsWideDecimalsToTheLastDigit) {
    const text::DecimalDigits most{~std::uint64_t{0}, ~std::uint32_t{0}, 0, false};
    const text::DecimalDigits small{1, 0, 28, true};
    const text::DecimalDigits zero{0, 0, 5, false};
    EXPECT_EQ(General(Cell::OfDecimal(most)), "79228162514264337593543950335");
    EXPECT_EQ(General(Cell::OfDecimal(small)), "0.0000000000000000000000000001");
    EXPECT_EQ(General(Cell::OfDecimal(zero)), "0");
    EXPECT_EQ(Masked(Cell::OfDecimal(most), 2), "79228162514264337593543950335.00");
    EXPECT_EQ(Masked(Cell::OfDecimal(small), 2), "0.00");
}

TEST(NumberPrinter, ShowsTheShortestDigitsOfFloatingPointValues) {
    EXPECT_EQ(General(Double(0.1)), "0.1");
    EXPECT_EQ(General(Double(-2.5)), "2.5");
    EXPECT_EQ(General(Double(3.14159)), "3.14159");
    EXPECT_EQ(General(Double(100)), "100");
    EXPECT_EQ(General(Double(0.0)), "0");
    EXPECT_EQ(General(Double(-0.0)), "0");
    EXPECT_EQ(General(Single(0.1F)), "0.1");
    EXPECT_EQ(General(Single(16777216.0F)), "16777216");
    EXPECT_EQ(General(Double(0.00001)), "0.00001");
}

TEST(NumberPrinter, ShowsVeryGreatAndVerySmallValuesWithAnExponent) {
    EXPECT_EQ(General(Double(999999999999999.0)), "999999999999999");
    EXPECT_EQ(General(Double(1e15)), "1E+15");
    EXPECT_EQ(General(Double(1.5e300)), "1.5E+300");
    EXPECT_EQ(General(Double(1.25e-7)), "1.25E-07");
    EXPECT_EQ(General(Double(5e-324)), "5E-324");
}

TEST(NumberPrinter, RoundsHalvesAwayFromZeroOnTheShortestDigits) {
    EXPECT_EQ(Masked(Double(1.005), 2), "1.01");
    EXPECT_EQ(Masked(Double(0.125), 2), "0.13");
    EXPECT_EQ(Masked(Double(-0.125), 2), "0.13");
    EXPECT_EQ(Masked(Double(2.5), 0), "3");
    EXPECT_EQ(Masked(Double(0.5), 0), "1");
    EXPECT_EQ(Masked(Double(0.4999), 0), "0");
    EXPECT_EQ(Masked(Double(9.995), 2), "10.00");
    EXPECT_EQ(Masked(Double(99.5), 0), "100");
    EXPECT_EQ(Masked(Double(0.05), 1), "0.1");
    EXPECT_EQ(Masked(Double(0.005), 1), "0.0");
    EXPECT_EQ(Masked(Cell::OfDecimal(12345, 3), 2), "12.35");
    EXPECT_EQ(Masked(Cell::OfDecimal(12344, 3), 2), "12.34");
    EXPECT_EQ(Masked(Cell::OfDecimal(995, 1), 0), "100");
    EXPECT_EQ(Masked(Currency(5), 3), "0.001");
    EXPECT_EQ(Masked(Single(0.15F), 1), "0.2");
}

TEST(NumberPrinter, FillsWithZerosToTheDecimals) {
    EXPECT_EQ(Masked(Double(3.14159), 7), "3.1415900");
    EXPECT_EQ(Masked(Cell::OfInteger(5), 3), "5.000");
    EXPECT_EQ(Masked(Cell::OfDecimal(15, 1), 20), "1.50000000000000000000");
    EXPECT_EQ(Masked(Double(1e22), 1), "10000000000000000000000.0");
    EXPECT_EQ(Masked(Double(1e-10), 3), "0.000");
    EXPECT_EQ(Masked(Double(0), 2), "0.00");
}

TEST(NumberPrinter, ShowsThePointWithoutDecimalsWhenAsked) {
    EXPECT_EQ(Masked(Double(3.7), 0, true), "4.");
    EXPECT_EQ(Masked(Double(0), 0, true), "0.");
    EXPECT_EQ(Masked(Currency(37000), 0, true), "4.");
    EXPECT_EQ(Masked(Cell::OfInteger(7), 0, true), "7.");
}

TEST(NumberPrinter, RefusesWhatIsNoNumber) {
    NumberPrinter printer;
    EXPECT_THROW(printer.General(Double(std::numeric_limits<double>::infinity())), Error);
    EXPECT_THROW(printer.Masked(Double(std::numeric_limits<double>::quiet_NaN()), 2, false), Error);
    EXPECT_THROW(printer.General(Cell()), Error);
}

TEST(NumberPrinter, KnowsNegativeNumbers) {
    const text::DecimalDigits minusZero{0, 0, 0, true};
    const text::DecimalDigits minusOne{1, 0, 0, true};
    EXPECT_TRUE(IsNegative(Double(-0.001)));
    EXPECT_FALSE(IsNegative(Double(-0.0)));
    EXPECT_FALSE(IsNegative(Cell::OfInteger(0)));
    EXPECT_TRUE(IsNegative(Currency(-1)));
    EXPECT_FALSE(IsNegative(Cell::OfDecimal(minusZero)));
    EXPECT_TRUE(IsNegative(Cell::OfDecimal(minusOne)));
}

}  // namespace
}  // namespace zu::textio
