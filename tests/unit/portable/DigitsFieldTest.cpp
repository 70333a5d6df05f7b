#include "portable/text/DigitsField.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "portable/text/NumberText.h"

namespace zu::text {
namespace {

std::string Found(const std::string& field, unsigned decimals) {
    const DigitsField::Place place = DigitsField(field.size(), decimals).Find(field.data());
    return field.substr(place.begin, place.end - place.begin);
}

std::string Shortest(const std::string& field, unsigned decimals) {
    const DigitsField::Place place = DigitsField(field.size(), decimals).FindShortest(field.data());
    return field.substr(place.begin, place.end - place.begin);
}

/// By the rules, character by character.
bool IsCanonical(const std::string& field, unsigned decimals) {
    std::size_t at = std::min(field.find_first_not_of(' '), field.size());
    const bool negative = at < field.size() && field[at] == '-';
    if (negative) ++at;
    std::string digits = field.substr(at);
    if (decimals != 0) {
        if (digits.size() < decimals + 2 || digits[digits.size() - decimals - 1] != '.') return false;
        digits.erase(digits.size() - decimals - 1, 1);
    }
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) return false;
    if (digits.size() > decimals + 1 && digits.front() == '0') return false;
    return !negative || digits.find_first_not_of('0') != std::string::npos;
}

TEST(DigitsField, FindsNumbersThatStandAsTheyAreWritten) {
    EXPECT_EQ(Found("   12.50", 2), "12.50");
    EXPECT_EQ(Found("  -12.50", 2), "-12.50");
    EXPECT_EQ(Found("    0.00", 2), "0.00");
    EXPECT_EQ(Found("7", 0), "7");
    EXPECT_EQ(Found("-1", 0), "-1");
    EXPECT_EQ(Found("1234567890123456", 0), "1234567890123456");
    EXPECT_EQ(Found("   -123456789.50", 2), "-123456789.50");
}

TEST(DigitsField, LeavesZerosBehindTheLastPlaceAway) {
    EXPECT_EQ(Shortest("   12.50", 2), "12.5");
    EXPECT_EQ(Shortest("   10.00", 2), "10");
    EXPECT_EQ(Shortest("    0.00", 2), "0");
    EXPECT_EQ(Shortest("   -0.01", 2), "-0.01");
    EXPECT_EQ(Shortest(" 100.0000000", 7), "100");
    EXPECT_EQ(Shortest(" 100.0000001", 7), "100.0000001");
    EXPECT_EQ(Shortest("     100", 0), "100");
}

TEST(DigitsField, LeavesOtherFormsToOthers) {
    for (const char* field :
         {"        ", "********", "   012.5", "     .50", "     5. ", "   +1.50", "   -0.00", " 1 2.50",
          "1,234.50", "  12,500", "--  1.50", " - 12.50", "   12.5\0", "12.50   ", "1.5e+003"}) {
        EXPECT_EQ(Found(std::string(field, 8), 2), "") << field;
    }
    EXPECT_EQ(Found("123456789012345678901", 0), "") << "too wide";
    EXPECT_EQ(Found("1.0000000000", 10), "") << "too many places";
    EXPECT_EQ(Found("1.50", 3), "");
    EXPECT_FALSE(DigitsField(0, 0).isUsable());
    EXPECT_FALSE(DigitsField(2, 1).isUsable()) << "no room for a digit in front of the point";
}

TEST(DigitsField, FindsWhatEveryOtherReaderTakesForTheSameText) {
    std::mt19937 numbers(3);
    int found = 0;
    for (int i = 0; i < 300'000; ++i) {
        const std::size_t width = 1 + numbers() % DigitsField::kGreatestWidth;
        const auto decimals = static_cast<unsigned>(numbers() % 8);
        const DigitsField digits(width, decimals);
        if (!digits.isUsable()) continue;
        std::string field;
        const std::string_view choice = numbers() % 2 == 0 ? "0123456789" : "0 -.,*1/:9";
        while (field.size() < width)
            field += choice[numbers() % choice.size()];
        std::fill_n(field.begin(), numbers() % (width + 1), ' ');
        if (decimals != 0 && numbers() % 8 != 0) field[width - decimals - 1] = '.';
        if (numbers() % 4 == 0) field[numbers() % width] = '-';
        const DigitsField::Place place = digits.Find(field.data());
        const bool tooLong = width > 16 && field.find_first_not_of(' ') < width - 16;
        ASSERT_EQ(place.end != 0, IsCanonical(field, decimals) && !tooLong)
            << '"' << field << "\" " << decimals;
        if (place.end == 0) continue;
        ++found;
        ASSERT_EQ(field.substr(place.begin), field.substr(field.find_first_not_of(' ')));
        DecimalDigits value;
        ASSERT_EQ(ParseDecimal(field, value), NumberForm::Number);
        std::string printed(width, '#');
        ASSERT_TRUE(PrintUnits(
            value.negative ? -static_cast<std::int64_t>(value.low) : static_cast<std::int64_t>(value.low),
            static_cast<unsigned>(width), decimals, printed.data()));
        ASSERT_EQ(printed, field);
    }
    EXPECT_GT(found, 30'000);
}

}  // namespace
}  // namespace zu::text
