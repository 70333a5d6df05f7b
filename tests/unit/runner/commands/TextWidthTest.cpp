#include "runner/commands/TextWidth.h"

#include <gtest/gtest.h>

namespace zu::runner::commands {
namespace {

TEST(TextWidth, CountsColumnsOfATerminal) {
    EXPECT_EQ(TextWidth(L""), 0U);
    EXPECT_EQ(TextWidth(L"Gr\u00F6\u00DFe"), 5U);
    EXPECT_EQ(TextWidth(L"\u6771\u4EAC"), 4U) << "wide characters take two";
    EXPECT_EQ(TextWidth(L"e\u0301"), 1U) << "a mark joins the letter before it";
    EXPECT_EQ(TextWidth(L"\xD83D\xDE00"), 2U) << "one character of two halves";
    EXPECT_EQ(TextWidth(L"\xD83D"), 1U) << "half a character does no harm";
}

TEST(TextWidth, CutsWithAnEllipsis) {
    EXPECT_EQ(CutToWidth(L"orders", 6), L"orders");
    EXPECT_EQ(CutToWidth(L"orders", 5), L"orde\u2026");
    EXPECT_EQ(CutToWidth(L"orders", 1), L"\u2026");
    EXPECT_EQ(CutToWidth(L"orders", 0), L"");
    EXPECT_EQ(CutToWidth(L"\u6771\u4EAC\u6771", 4), L"\u6771\u2026") << "no half of a wide character";
    EXPECT_EQ(CutToWidth(L"a\xD83D\xDE00z", 3), L"a\u2026") << "no half of a pair";
}

TEST(TextWidth, FillsUpOnEitherSide) {
    EXPECT_EQ(PadToWidth(L"a", 3, false), L"a  ");
    EXPECT_EQ(PadToWidth(L"a", 3, true), L"  a");
    EXPECT_EQ(PadToWidth(L"abcd", 3, true), L"abcd");
    EXPECT_EQ(PadToWidth(L"\u6771", 3, false), L"\u6771 ");
}

TEST(TextWidth, ShowsTheFirstLineWithoutControlCharacters) {
    EXPECT_EQ(FirstLine(L"one\r\ntwo"), L"one");
    EXPECT_EQ(FirstLine(L"one\ntwo"), L"one");
    EXPECT_EQ(FirstLine(L"a\tb\x1B[31m"), L"a b [31m");
    EXPECT_EQ(FirstLine(L"\u0085x"), L" x");
}

}  // namespace
}  // namespace zu::runner::commands
