#pragma once

#include <optional>

#include "portable/grid/Cell.h"

namespace zu::grid {

/// Positions of a scroll bar, which knows 31 bits only.
struct ScrollPositions {
    int last = 0;  ///< greatest position of the whole range
    int page = 0;
    int position = 0;
};

/// The part of a grid that a window shows. Down it goes row by row, sideways pixel by pixel; the header rows
/// stay on top.
class Viewport {
public:
    /// Heights and the window's inner size in pixels.
    void SetMetrics(int rowHeight, int headerHeight);
    void SetSize(int width, int height);
    /// Rows of the grid (headers included) and the width of all its columns.
    void SetContent(Row rows, int contentWidth);

    int rowHeight() const noexcept { return rowHeight_; }
    int headerHeight() const noexcept { return headerHeight_; }
    int width() const noexcept { return width_; }
    int height() const noexcept { return height_; }
    Row topRow() const noexcept { return top_; }
    int left() const noexcept { return left_; }

    /// Rows that fit as a whole, at least one, so that paging always moves.
    Row fullRows() const noexcept;
    /// The row behind the last one of which anything can be seen.
    Row visibleEnd() const noexcept;
    /// The top of a row in the window; it lies outside the window for rows that cannot be seen.
    Row RowTop(Row row) const noexcept { return headerHeight_ + (row - top_) * rowHeight_; }
    /// The data row at a height in the window; none in the headers and below the last row.
    std::optional<Row> RowAt(int y) const noexcept;

    /// Each answers whether anything moved.
    bool ScrollToRow(Row row);
    bool ScrollBy(Row rows) { return ScrollToRow(top_ + rows); }
    bool ScrollToLeft(int x);
    /// The least motion that shows the whole row.
    bool ShowRow(Row row);
    /// The least motion that shows a column from `left` to `right`; its left edge matters most.
    bool ShowColumn(int left, int right);

    /// The vertical scroll bar; beyond 2^30 rows one position stands for several rows.
    ScrollPositions Vertical() const noexcept;
    /// The row that a position of that bar means.
    Row RowOfPosition(int position) const noexcept;
    ScrollPositions Horizontal() const noexcept;

private:
    Row LastTop() const noexcept;
    Row Scale() const noexcept;
    void Clamp();

    int rowHeight_ = 1;
    int headerHeight_ = 0;
    int width_ = 0;
    int height_ = 0;
    Row rows_ = kHeaderRows;
    int contentWidth_ = 0;
    Row top_ = kHeaderRows;
    int left_ = 0;
};

}  // namespace zu::grid
