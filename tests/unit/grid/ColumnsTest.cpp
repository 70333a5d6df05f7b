#include "portable/grid/Columns.h"

#include <gtest/gtest.h>

namespace zu::grid {
namespace {

Columns Three() {
    Columns columns;
    for (const int width : {50, 100, 30}) {
        Column column;
        column.width = width;
        columns.Add(column);
    }
    return columns;
}

TEST(Columns, TheFixedColumnTakesNoRoom) {
    const Columns columns = Three();
    EXPECT_EQ(columns.count(), 4);
    EXPECT_EQ(columns[0].width, 0);
    EXPECT_EQ(columns.Left(1), 0);
    EXPECT_EQ(columns.Left(3), 150);
    EXPECT_EQ(columns.totalWidth(), 180);
}

TEST(Columns, FindsTheColumnAtAPosition) {
    const Columns columns = Three();
    EXPECT_EQ(columns.At(0), 1);
    EXPECT_EQ(columns.At(49), 1);
    EXPECT_EQ(columns.At(50), 2);
    EXPECT_EQ(columns.At(179), 3);
    EXPECT_EQ(columns.At(180), std::nullopt);
    EXPECT_EQ(columns.At(-1), std::nullopt);
}

TEST(Columns, EdgesAreFoundWithinReach) {
    const Columns columns = Three();
    EXPECT_EQ(columns.EdgeAt(52, 4), 1);
    EXPECT_EQ(columns.EdgeAt(56, 4), std::nullopt);
    EXPECT_EQ(columns.EdgeAt(183, 4), 3);
    EXPECT_EQ(columns.EdgeAt(0, 4), std::nullopt);
}

TEST(Columns, ANarrowColumnsEdgeWinsOverItsNeighbours) {
    Columns columns = Three();
    columns.SetWidth(2, 0);
    EXPECT_EQ(columns[2].width, Columns::kLeastWidth);
    EXPECT_EQ(columns.EdgeAt(54, 6), 2);
}

TEST(Columns, TheFixedColumnCannotBeResized) {
    Columns columns = Three();
    columns.SetWidth(0, 40);
    columns.SetWidth(9, 40);
    EXPECT_EQ(columns.totalWidth(), 180);
}

TEST(Columns, ScalingKeepsTheProportions) {
    Columns columns = Three();
    columns.Scale(192, 96);
    EXPECT_EQ(columns.totalWidth(), 360);
    columns.Scale(96, 192);
    EXPECT_EQ(columns.totalWidth(), 180);
    columns.Scale(1, 0);
    EXPECT_EQ(columns.totalWidth(), 180);
}

}  // namespace
}  // namespace zu::grid
