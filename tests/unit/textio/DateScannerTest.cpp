#include "portable/textio/DateScanner.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string_view>

#include "portable/calendar/Calendar.h"

namespace zu::textio {
namespace {

std::optional<calendar::Date> Scan(std::u16string_view mask, std::u16string_view separator,
                                   std::string_view token) {
    const auto day = DateScanner(mask, separator, mask.size()).Scan(token);
    if (!day) return std::nullopt;
    return calendar::FromJulianDay(*day);
}

const calendar::Date kLastOfJanuary{2024, 1, 31};

TEST(DateScanner, ReadsEightDigitsYearFirst) {
    EXPECT_EQ(Scan(u"yyyymmdd", u"", "20240131"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"yyyymmdd", u"", "  20240131 "), kLastOfJanuary);
}

TEST(DateScanner, PassesOverSeparators) {
    EXPECT_EQ(Scan(u"dd.mm.yyyy", u".", "31.01.2024"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"mm/dd/yyyy", u"/", "01/31/2024"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"yyyy-mm-dd", u"-", "2024-01-31"), kLastOfJanuary);
}

TEST(DateScanner, PassesOverAnyOtherCharacterOfTheMask) {
    EXPECT_EQ(Scan(u"dd, mm, yyyy", u", ", "31, 01, 2024"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"yyyy-mm-dd", u"", "2024-01-31"), kLastOfJanuary);
}

TEST(DateScanner, ReadsMonthNames) {
    EXPECT_EQ(Scan(u"dd/mmm/yyyy", u"/", "31/Jan/2024"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"dd/mmm/yyyy", u"/", "31/JAN/2024"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"yyyymmmdd", u"", "2024jan31"), kLastOfJanuary);
}

TEST(DateScanner, ReadsFullMonthNamesOfAnyLength) {
    EXPECT_EQ(Scan(u"dd/mmmm/yyyy", u"/", "31/January/2024"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"ddmmmmyyyy", u"", "30September2024"), (calendar::Date{2024, 9, 30}));
    EXPECT_EQ(Scan(u"yyyy mmmm dd", u" ", "2024 May 01"), (calendar::Date{2024, 5, 1}));
}

TEST(DateScanner, ReadsDaysAndMonthsWithoutLeadingZeros) {
    EXPECT_EQ(Scan(u"dd/mm/yyyy", u"/", "1/2/2024"), (calendar::Date{2024, 2, 1}));
}

TEST(DateScanner, TakesCapitalsInTheMask) {
    EXPECT_EQ(Scan(u"DD.MM.YYYY", u".", "31.01.2024"), kLastOfJanuary);
}

TEST(DateScanner, PutsYearsOfTwoDigitsIntoTheirCentury) {
    EXPECT_EQ(Scan(u"ddmmyy", u"", "310124"), kLastOfJanuary);
    EXPECT_EQ(Scan(u"ddmmyy", u"", "310129"), (calendar::Date{2029, 1, 31}));
    EXPECT_EQ(Scan(u"ddmmyy", u"", "310130"), (calendar::Date{1930, 1, 31}));
}

TEST(DateScanner, LooksAtTheKeptLengthOfTheMaskOnly) {
    const DateScanner scanner(u"dd.mm.yyyy", u".", 8);
    EXPECT_EQ(scanner.Scan("31.01.24"), calendar::ToJulianDay(kLastOfJanuary));
}

TEST(DateScanner, RefusesWhatIsNoDate) {
    for (const char* token : {"20240231", "20241301", "202401", "2024XX01", "abcdefgh", "00000000", "2024"}) {
        EXPECT_EQ(Scan(u"yyyymmdd", u"", token), std::nullopt) << token;
    }
    EXPECT_EQ(Scan(u"dd/mmm/yyyy", u"/", "31/Jxn/2024"), std::nullopt);
    EXPECT_EQ(Scan(u"dd/mm/yyyy", u"/", "1/2/2024x"), std::nullopt);
    EXPECT_EQ(Scan(u"", u"", "20240131"), std::nullopt);
}

TEST(DateScanner, KnowsLeapDays) {
    EXPECT_EQ(Scan(u"yyyymmdd", u"", "20240229"), (calendar::Date{2024, 2, 29}));
    EXPECT_EQ(Scan(u"yyyymmdd", u"", "20230229"), std::nullopt);
}

TEST(DateScanner, ReadsRunsOfFullLengthAsItReadsShorterOnes) {
    // Only runs of full length are read at once.
    for (int month = 0; month <= 13; ++month) {
        for (int day = 0; day <= 32; ++day) {
            for (const int year : {0, 29, 30, 99, 100, 1900, 2000, 2023, 2024, 9999}) {
                char whole[32];
                char pieces[32];
                std::snprintf(whole, sizeof whole, "%02d/%02d/%04d", day, month, year);
                std::snprintf(pieces, sizeof pieces, "%d/%d/%d", day, month, year);
                if (std::string_view(whole).size() == std::string_view(pieces).size()) continue;
                ASSERT_EQ(Scan(u"dd/mm/yyyy", u"/", whole), Scan(u"dd/mm/yyyy", u"/", pieces)) << whole;
            }
        }
    }
    EXPECT_EQ(Scan(u"dd/mm/yyyy", u"/", "3x/01/2024"), std::nullopt);
    EXPECT_EQ(Scan(u"yyyymmyyyydd", u"", "202401202431"), std::nullopt) << "a part that is cut twice";
    EXPECT_EQ(Scan(u"ddd.mm.yyyy", u".", "031.01.2024"), kLastOfJanuary);
}

}  // namespace
}  // namespace zu::textio
