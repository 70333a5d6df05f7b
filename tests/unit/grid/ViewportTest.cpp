#include "portable/grid/Viewport.h"

#include <gtest/gtest.h>

namespace zu::grid {
namespace {

/// Rows of 20 pixels under headers of 40, in a window of 200 x `height`.
Viewport Window(Row rows, int height = 240, int contentWidth = 500) {
    Viewport view;
    view.SetMetrics(20, 40);
    view.SetSize(200, height);
    view.SetContent(rows, contentWidth);
    return view;
}

TEST(Viewport, CountsThePartlyVisibleRow) {
    EXPECT_EQ(Window(1000, 240).fullRows(), 10);
    EXPECT_EQ(Window(1000, 240).visibleEnd(), 12);
    EXPECT_EQ(Window(1000, 241).visibleEnd(), 13);
    EXPECT_EQ(Window(7, 240).visibleEnd(), 7);
}

TEST(Viewport, FindsRowsByHeight) {
    const Viewport view = Window(1000);
    EXPECT_EQ(view.RowAt(39), std::nullopt);
    EXPECT_EQ(view.RowAt(40), 2);
    EXPECT_EQ(view.RowAt(59), 2);
    EXPECT_EQ(view.RowAt(60), 3);
    EXPECT_EQ(view.RowAt(240), std::nullopt);
    EXPECT_EQ(Window(3).RowAt(60), std::nullopt);
    EXPECT_EQ(view.RowTop(3), 60);
}

TEST(Viewport, ScrollsNoFurtherThanTheLastFullPage) {
    Viewport view = Window(102);
    EXPECT_TRUE(view.ScrollToRow(1000));
    EXPECT_EQ(view.topRow(), 92);
    EXPECT_FALSE(view.ScrollBy(1));
    EXPECT_TRUE(view.ScrollBy(-500));
    EXPECT_EQ(view.topRow(), 2);
}

TEST(Viewport, ShowsARowWithTheLeastMotion) {
    Viewport view = Window(102);
    EXPECT_FALSE(view.ShowRow(11));
    EXPECT_TRUE(view.ShowRow(12));
    EXPECT_EQ(view.topRow(), 3);
    EXPECT_TRUE(view.ShowRow(2));
    EXPECT_EQ(view.topRow(), 2);
    EXPECT_FALSE(view.ShowRow(0));
}

TEST(Viewport, ShowsAColumnPreferringItsLeftEdge) {
    Viewport view = Window(10);
    EXPECT_TRUE(view.ShowColumn(180, 260));
    EXPECT_EQ(view.left(), 60);
    EXPECT_TRUE(view.ShowColumn(20, 50));
    EXPECT_EQ(view.left(), 20);
    EXPECT_TRUE(view.ShowColumn(100, 450));
    EXPECT_EQ(view.left(), 100);
}

TEST(Viewport, ReturnsWhenTheWindowGrows) {
    Viewport view = Window(14);
    view.ScrollToRow(100);
    EXPECT_EQ(view.topRow(), 4);
    view.SetSize(600, 900);
    EXPECT_EQ(view.topRow(), 2);
    EXPECT_EQ(view.left(), 0);
}

TEST(Viewport, ScrollBarsTellRowsAsTheyAreUpToAThousandMillion) {
    Viewport view = Window(10'000'002);
    view.ScrollToRow(4'863'516);
    const ScrollPositions bar = view.Vertical();
    EXPECT_EQ(bar.last, 9'999'999);
    EXPECT_EQ(bar.page, 10);
    EXPECT_EQ(bar.position, 4'863'514);
    EXPECT_EQ(view.RowOfPosition(bar.position), 4'863'516);
}

TEST(Viewport, BeyondThatOnePositionStandsForSeveralRows) {
    Viewport view = Window(10'000'000'002);
    view.ScrollToRow(10'000'000'001);
    const ScrollPositions bar = view.Vertical();
    EXPECT_LE(bar.last, 1 << 30);
    EXPECT_GE(bar.page, 1);
    EXPECT_LE(bar.position, bar.last);
    view.ScrollToRow(view.RowOfPosition(bar.last));
    EXPECT_GT(view.topRow(), 9'999'999'900);
}

TEST(Viewport, AnEmptyGridHasNothingToScroll) {
    Viewport view = Window(2, 240, 0);
    EXPECT_EQ(view.visibleEnd(), 2);
    EXPECT_FALSE(view.ScrollBy(5));
    EXPECT_EQ(view.Vertical().last, 0);
    EXPECT_EQ(view.Horizontal().last, 0);
}

TEST(Viewport, AWindowWithoutRoomShowsNothingAndStillMoves) {
    Viewport view = Window(100, 10);
    EXPECT_EQ(view.visibleEnd(), 2);
    EXPECT_EQ(view.fullRows(), 1);
    EXPECT_TRUE(view.ShowRow(50));
    EXPECT_EQ(view.topRow(), 50);
}

}  // namespace
}  // namespace zu::grid
