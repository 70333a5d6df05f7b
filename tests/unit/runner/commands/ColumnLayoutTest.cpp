#include "runner/commands/ColumnLayout.h"

#include <gtest/gtest.h>

namespace zu::runner::commands {
namespace {

using Cells = std::vector<std::wstring>;

ColumnLayout TwoTextsAndANumber() {
    ColumnLayout layout({{L"NAME"}, {L"AMOUNT", true, true}, {L"NOTE"}});
    layout.Measure({L"Nordlicht Textiles", L"5.00", L"pays late, ask before shipping"});
    layout.Measure({L"Vogt", L"1250.00", L""});
    return layout;
}

TEST(ColumnLayout, ColumnsAreAsWideAsTheirContentAndNumbersStandAtTheRight) {
    const ColumnLayout layout = TwoTextsAndANumber();
    EXPECT_EQ(layout.Header(), L"NAME                 AMOUNT  NOTE");
    EXPECT_EQ(layout.Rule(), L"------------------  -------  ------------------------------");
    EXPECT_EQ(layout.Line({L"Vogt", L"1250.00", L""}), L"Vogt                1250.00");
    EXPECT_EQ(layout.Line({L"Vogt", L"5.00", L"x"}), L"Vogt                   5.00  x");
}

TEST(ColumnLayout, TheWidestTextGivesWayFirst) {
    ColumnLayout layout = TwoTextsAndANumber();
    layout.Fit(50);
    EXPECT_EQ(layout.Line({L"Nordlicht Textiles", L"5.00", L"pays late, ask before shipping"}),
              L"Nordlicht Textiles     5.00  pays late, ask befor\u2026");
    layout = TwoTextsAndANumber();
    layout.Fit(39);
    EXPECT_EQ(layout.Line({L"Nordlicht Textiles", L"5.00", L"pays late, ask before shipping"}),
              L"Nordlicht T\u2026     5.00  pays late, ask \u2026");
    EXPECT_TRUE(layout.LeftOut().empty());
}

TEST(ColumnLayout, ColumnsWithoutRoomAreLeftOutAndNamed) {
    ColumnLayout layout = TwoTextsAndANumber();
    layout.Fit(30);
    EXPECT_EQ(layout.LeftOut(), Cells{L"NOTE"});
    EXPECT_EQ(layout.Line({L"Nordlicht Textiles", L"5.00", L"pays late"}), L"Nordlicht Textiles     5.00")
        << "those that stay get their room back";
}

TEST(ColumnLayout, NumbersAreNeverCut) {
    ColumnLayout layout({{L"A", true, true}, {L"B", true, true}});
    layout.Measure({L"1", L"2"});
    layout.Fit(10);
    EXPECT_EQ(layout.Line({L"123456789", L"2"}), L"123456789  2") << "one that comes later stands out";
}

TEST(ColumnLayout, TheFirstColumnStaysHoweverNarrowTheLine) {
    ColumnLayout layout = TwoTextsAndANumber();
    layout.Fit(5);
    EXPECT_EQ(layout.Line({L"Nordlicht Textiles", L"5.00", L""}), L"Nord\u2026");
    EXPECT_EQ(layout.LeftOut(), (Cells{L"AMOUNT", L"NOTE"}));
}

TEST(ColumnLayout, WithoutAWidthNothingIsCut) {
    const ColumnLayout layout = TwoTextsAndANumber();
    EXPECT_EQ(layout.Line({L"A name that is longer than all", L"1.00", L"n"}),
              L"A name that is longer than all     1.00  n");
}

TEST(ColumnLayout, LongNamesOfNarrowColumnsKeepTheirWidth) {
    ColumnLayout layout({{L"POSTCODE"}, {L"X"}});
    layout.Measure({L"1", L"2"});
    EXPECT_EQ(layout.Header(), L"POSTCODE  X");
    EXPECT_EQ(layout.Line({L"1", L"2"}), L"1         2");
}

}  // namespace
}  // namespace zu::runner::commands
