#include "portable/grid/Motion.h"

#include <gtest/gtest.h>

#include "portable/grid/EnterDirection.h"

namespace zu::grid {
namespace {

constexpr Extent kTen{12, 4};  // ten records of three fields

TEST(Motion, StopsAtTheEdgesAndNeverWraps) {
    EXPECT_EQ(Moved({2, 1}, Motion::kUp, kTen, 5), (Cell{2, 1}));
    EXPECT_EQ(Moved({2, 1}, Motion::kLeft, kTen, 5), (Cell{2, 1}));
    EXPECT_EQ(Moved({11, 3}, Motion::kDown, kTen, 5), (Cell{11, 3}));
    EXPECT_EQ(Moved({11, 3}, Motion::kRight, kTen, 5), (Cell{11, 3}));
}

TEST(Motion, MovesOneCellAtATime) {
    EXPECT_EQ(Moved({5, 2}, Motion::kUp, kTen, 5), (Cell{4, 2}));
    EXPECT_EQ(Moved({5, 2}, Motion::kDown, kTen, 5), (Cell{6, 2}));
    EXPECT_EQ(Moved({5, 2}, Motion::kLeft, kTen, 5), (Cell{5, 1}));
    EXPECT_EQ(Moved({5, 2}, Motion::kRight, kTen, 5), (Cell{5, 3}));
}

TEST(Motion, PagesKeepTheColumn) {
    EXPECT_EQ(Moved({3, 2}, Motion::kPageDown, kTen, 5), (Cell{8, 2}));
    EXPECT_EQ(Moved({8, 2}, Motion::kPageDown, kTen, 5), (Cell{11, 2}));
    EXPECT_EQ(Moved({4, 2}, Motion::kPageUp, kTen, 5), (Cell{2, 2}));
}

TEST(Motion, JumpsToTheEndsOfRowAndGrid) {
    EXPECT_EQ(Moved({5, 2}, Motion::kRowStart, kTen, 5), (Cell{5, 1}));
    EXPECT_EQ(Moved({5, 2}, Motion::kRowEnd, kTen, 5), (Cell{5, 3}));
    EXPECT_EQ(Moved({5, 2}, Motion::kFirstRow, kTen, 5), (Cell{2, 2}));
    EXPECT_EQ(Moved({5, 2}, Motion::kLastRow, kTen, 5), (Cell{11, 2}));
    EXPECT_EQ(Moved({5, 2}, Motion::kFirstCell, kTen, 5), (Cell{2, 1}));
    EXPECT_EQ(Moved({5, 2}, Motion::kLastCell, kTen, 5), (Cell{11, 3}));
}

TEST(Motion, AGridWithoutCellsStaysWhereItIs) {
    EXPECT_EQ(Moved({2, 1}, Motion::kLastCell, {2, 4}, 5), (Cell{2, 1}));
    EXPECT_EQ(Moved({2, 1}, Motion::kDown, {9, 1}, 5), (Cell{2, 1}));
}

TEST(EnterDirection, TakesTheFourWordsInAnyCase) {
    EXPECT_EQ(DirectionOf(u"RIGHT"), EnterDirection::kRight);
    EXPECT_EQ(DirectionOf(u"left"), EnterDirection::kLeft);
    EXPECT_EQ(DirectionOf(u"dOwN"), EnterDirection::kDown);
    EXPECT_EQ(DirectionOf(u"Up"), EnterDirection::kUp);
}

TEST(EnterDirection, EveryOtherWordStays) {
    for (const auto* word : {u"", u"DOWNWARDS", u"DOW", u" DOWN", u"3", u"stay"})
        EXPECT_EQ(DirectionOf(std::u16string_view(word)), EnterDirection::kStay);
}

TEST(EnterDirection, TakesTheNumbersOneToFour) {
    EXPECT_EQ(DirectionOf(1.0), EnterDirection::kRight);
    EXPECT_EQ(DirectionOf(4.0), EnterDirection::kUp);
    for (const double number : {0.0, 5.0, -1.0, 2.5, 1e300})
        EXPECT_EQ(DirectionOf(number), EnterDirection::kStay);
}

TEST(EnterDirection, LeadsToTheNeighbourAndStaysAtTheEdge) {
    EXPECT_EQ(NextCell({5, 2}, EnterDirection::kRight, kTen), (Cell{5, 3}));
    EXPECT_EQ(NextCell({5, 2}, EnterDirection::kLeft, kTen), (Cell{5, 1}));
    EXPECT_EQ(NextCell({5, 2}, EnterDirection::kDown, kTen), (Cell{6, 2}));
    EXPECT_EQ(NextCell({5, 2}, EnterDirection::kUp, kTen), (Cell{4, 2}));
    EXPECT_EQ(NextCell({5, 2}, EnterDirection::kStay, kTen), (Cell{5, 2}));
    EXPECT_EQ(NextCell({11, 2}, EnterDirection::kDown, kTen), (Cell{11, 2}));
}

}  // namespace
}  // namespace zu::grid
