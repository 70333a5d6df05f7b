#include "host/technologies/dbf/write/ValueText.h"

#include <gtest/gtest.h>

#include "tests/unit/dbfwrite/WriteTable.h"

namespace zu::dbf::write {
namespace {

using technologies::Decimal;

TEST(ValueText, ShowsNumbersInTheirShortestForm) {
    EXPECT_EQ(TextOf(test::Integer(-42)), u"-42");
    EXPECT_EQ(TextOf(test::Number(0.1)), u"0.1");
    EXPECT_EQ(TextOf(test::DecimalValue(1250, 2)), u"12.5");
    EXPECT_EQ(TextOf(test::DecimalValue(1200, 2)), u"12");
    EXPECT_EQ(TextOf(test::DecimalValue(5, 3, true)), u"-0.005");
    EXPECT_EQ(TextOf(test::DecimalValue(0, 2, true)), u"0");
}

TEST(ValueText, ShowsAllDigitsOfTheGreatestDecimal) {
    const Decimal greatest{UINT64_MAX, UINT32_MAX, 0, false};
    EXPECT_EQ(DigitsOf(greatest), "79228162514264337593543950335");
    EXPECT_EQ(DigitsOf(Decimal{5, 0, 3, false}), "0005");
}

TEST(ValueText, RoundsHalfAwayFromZero) {
    EXPECT_EQ(Rounded({12345, 0, 3, false}, 2), (Decimal{1235, 0, 2, false}));
    EXPECT_EQ(Rounded({12344, 0, 3, true}, 2), (Decimal{1234, 0, 2, true}));
    EXPECT_EQ(Rounded({1245, 0, 3, false}, 0), (Decimal{1, 0, 0, false}));
    EXPECT_EQ(Rounded({5, 0, 1, true}, 0), (Decimal{1, 0, 0, true}));
    EXPECT_EQ(Rounded({12, 0, 1, false}, 3), (Decimal{12, 0, 1, false}));
    EXPECT_EQ(Rounded({UINT64_MAX, 0, 1, false}, 0), (Decimal{UINT64_MAX / 10 + 1, 0, 0, false}));
}

TEST(ValueText, ReadsMoments) {
    const auto day = MomentIn(u" 2024-02-29 ");
    ASSERT_TRUE(day);
    EXPECT_EQ(day->julianDay, calendar::ToJulianDay({2024, 2, 29}));
    EXPECT_EQ(day->milliseconds, 0);
    EXPECT_EQ(MomentIn(u"20240229")->julianDay, day->julianDay);
    EXPECT_EQ(MomentIn(u"2024/2/29")->julianDay, day->julianDay);
    EXPECT_EQ(MomentIn(u"2024.02.29 13:45")->milliseconds, (13 * 60 + 45) * 60000);
    EXPECT_EQ(MomentIn(u"2024-02-29T23:59:59")->milliseconds, 86399000);
}

TEST(ValueText, RefusesWhatIsNoMoment) {
    for (const auto* text : {u"", u"2023-02-29", u"2024-13-01", u"29.02.2024", u"2024-02-29x",
                             u"2024-02-29 24:00", u"2024-02-29 12:60", u"202402", u"2024022", u"yesterday"})
        EXPECT_FALSE(MomentIn(text)) << testing::PrintToString(std::u16string(text));
}

TEST(ValueText, ReadsTruthValues) {
    for (const auto* text : {u"T", u"true", u" Yes ", u".t.", u".Y.", u"on", u"1", u"-3.5"})
        EXPECT_EQ(TruthIn(text), true);
    for (const auto* text : {u"f", u"FALSE", u"no", u".F.", u".n.", u"off", u"0", u"0.00"})
        EXPECT_EQ(TruthIn(text), false);
    for (const auto* text : {u"", u"maybe", u"tr", u"1x"})
        EXPECT_EQ(TruthIn(text), std::nullopt);
}

}  // namespace
}  // namespace zu::dbf::write
