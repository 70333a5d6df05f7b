#include "portable/textio/DatePrinter.h"

#include <gtest/gtest.h>

#include "portable/calendar/Calendar.h"

namespace zu::textio {
namespace {

std::u16string Print(const char16_t* mask, int year, int month, int day) {
    DatePrinter printer(mask);
    return std::u16string(printer.Print(calendar::ToJulianDay({year, month, day})));
}

TEST(DatePrinter, WritesYearMonthAndDay) {
    EXPECT_EQ(Print(u"yyyymmdd", 2024, 1, 31), u"20240131");
    EXPECT_EQ(Print(u"dd.mm.yyyy", 2024, 2, 9), u"09.02.2024");
    EXPECT_EQ(Print(u"yyyy-mm-dd", 123, 12, 1), u"0123-12-01");
}

TEST(DatePrinter, WritesEnglishMonthNames) {
    EXPECT_EQ(Print(u"dd mmm yyyy", 2024, 3, 5), u"05 Mar 2024");
    EXPECT_EQ(Print(u"dd mmmm yyyy", 2024, 3, 5), u"05 March 2024");
    const char16_t* const names[] = {u"January",   u"February", u"March",    u"April",
                                     u"May",       u"June",     u"July",     u"August",
                                     u"September", u"October",  u"November", u"December"};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(Print(u"mmmm", 2000, month, 1), names[month - 1]);
}

TEST(DatePrinter, CopiesEveryOtherCharacter) {
    EXPECT_EQ(Print(u"y yy m d q\u20AC", 2024, 1, 31), u"y yy m d q\u20AC");
    EXPECT_EQ(Print(u"ddd", 2024, 1, 31), u"31d");
    EXPECT_EQ(Print(u"mmmmm", 2024, 1, 31), u"Januarym");
    EXPECT_EQ(Print(u"", 2024, 1, 31), u"");
}

TEST(DatePrinter, TakesCapitalsInTheMaskToo) {
    EXPECT_EQ(Print(u"DD/MM/YYYY", 2024, 1, 31), u"31/01/2024");
}

TEST(DatePrinter, ShowsTheSecondOfTwoDays) {
    DatePrinter printer(u"dd");
    EXPECT_EQ(printer.Print(calendar::ToJulianDay({2024, 1, 30})), u"30");
    EXPECT_EQ(printer.Print(calendar::ToJulianDay({2024, 1, 31})), u"31");
}

}  // namespace
}  // namespace zu::textio
