#include "host/expression/ScaledDigits.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace zu::expression {
namespace {

std::string Units(const std::string& field, unsigned decimals) {
    std::int64_t units = 0;
    if (!ParseUnits(field.data(), static_cast<unsigned>(field.size()), decimals, units)) return "refused";
    return std::to_string(units);
}

TEST(ScaledDigits, ReadsTheRegularFormOfNumberFields) {
    EXPECT_EQ(Units("      1.50", 2), "150");
    EXPECT_EQ(Units("     -1.50", 2), "-150");
    EXPECT_EQ(Units("       .50", 2), "50");
    EXPECT_EQ(Units("      -.50", 2), "-50");
    EXPECT_EQ(Units("0000042", 0), "42");
    EXPECT_EQ(Units("     42", 0), "42");
    EXPECT_EQ(Units("-42", 0), "-42");
}

TEST(ScaledDigits, ReadsBlankFieldsAsZero) {
    EXPECT_EQ(Units("       ", 0), "0");
    EXPECT_EQ(Units("       ", 2), "0");
    EXPECT_EQ(Units("      -", 0), "0");
}

TEST(ScaledDigits, LeavesEveryOtherFormToTheLongWay) {
    EXPECT_EQ(Units("1.50    ", 2), "refused");
    EXPECT_EQ(Units("   1,50", 2), "refused");
    EXPECT_EQ(Units("  1.5e2", 2), "refused");
    EXPECT_EQ(Units("*******", 2), "refused");
    EXPECT_EQ(Units("    150", 2), "refused");
    EXPECT_EQ(Units("   +1.50", 2), "refused");
    EXPECT_EQ(Units("  1 2", 0), "refused");
    EXPECT_EQ(Units("   -  .50", 2), "refused");
    EXPECT_EQ(Units("      .  ", 2), "refused");
    EXPECT_EQ(Units(std::string("  1\0", 4), 0), "refused");
}

TEST(ScaledDigits, ReadsEighteenDigitsAndNoMore) {
    EXPECT_EQ(Units("999999999999999999", 0), "999999999999999999");
    EXPECT_EQ(Units("-9999999999999999.99", 2), "-999999999999999999");
    EXPECT_EQ(Units("9999999999999999999", 0), "refused");
    EXPECT_EQ(Units("99999999999999999.99", 2), "refused");
}

TEST(ScaledDigits, ReadsAllWidthsAndPlacesLikeAPrintedNumber) {
    for (unsigned decimals = 0; decimals <= 6; ++decimals) {
        for (unsigned width = decimals + 3; width <= 17; ++width) {
            for (const long long whole : {0LL, 1LL, -1LL, 7LL, 12LL, -45LL, 999LL}) {
                char text[64];
                long long units = whole;
                for (unsigned i = 0; i < decimals; ++i)
                    units = units * 10 + (whole < 0 ? -3 : 3);
                const long long size = units < 0 ? -units : units;
                long long power = 1;
                for (unsigned i = 0; i < decimals; ++i)
                    power *= 10;
                std::string digits = (units < 0 ? "-" : "") + std::to_string(size / power);
                if (decimals > 0) {
                    std::snprintf(text, sizeof text, ".%0*lld", static_cast<int>(decimals), size % power);
                    digits += text;
                }
                if (digits.size() > width) continue;
                EXPECT_EQ(Units(std::string(width - digits.size(), ' ') + digits, decimals),
                          std::to_string(units));
            }
        }
    }
}

TEST(ScaledDigits, ReadsEveryFormLikeTheLongWay) {
    // Two characters that break the form at every place of every width.
    for (unsigned width = 1; width <= 19; ++width) {
        for (unsigned decimals = 0; decimals + 1 < width && decimals <= 4; ++decimals) {
            std::string regular(width, '7');
            if (decimals > 0) regular[width - decimals - 1] = '.';
            for (unsigned blanks = 0; blanks <= width; ++blanks) {
                const std::string base = std::string(blanks, ' ') + regular.substr(blanks);
                for (unsigned at = 0; at < width; ++at) {
                    for (const char c : {' ', '-', '.', '0', 'x', '\0'}) {
                        std::string text = base;
                        text[at] = c;
                        std::int64_t slow = 0;
                        const bool isRegular = ParseUnitsSlowly(text.data(), width, decimals, slow);
                        EXPECT_EQ(Units(text, decimals), isRegular ? std::to_string(slow) : "refused")
                            << text;
                    }
                }
            }
        }
    }
}

TEST(ScaledDigits, ReadsEightDigitsAtOnce) {
    std::uint32_t value = 0;
    EXPECT_TRUE(ParseEightDigits("20240131", value));
    EXPECT_EQ(value, 20240131U);
    EXPECT_TRUE(ParseEightDigits("99999999", value));
    EXPECT_EQ(value, 99999999U);
    EXPECT_TRUE(ParseEightDigits("      07", value));
    EXPECT_EQ(value, 7U);
    EXPECT_TRUE(ParseEightDigits("        ", value));
    EXPECT_EQ(value, 0U);
}

TEST(ScaledDigits, RefusesEverythingElseInEightCharacters) {
    std::uint32_t value = 0;
    for (int byte = 0; byte < 256; ++byte) {
        for (std::size_t at = 0; at < 8; ++at) {
            std::string text = "12345678";
            text[at] = static_cast<char>(byte);
            const bool isDigit = byte >= '0' && byte <= '9';
            const bool isBlankInFront = byte == ' ' && at == 0;
            EXPECT_EQ(ParseEightDigits(text.data(), value), isDigit || isBlankInFront)
                << byte << " at " << at;
        }
    }
    EXPECT_FALSE(ParseEightDigits("1 345678", value));
    EXPECT_FALSE(ParseEightDigits("1234567 ", value));
}

}  // namespace
}  // namespace zu::expression
