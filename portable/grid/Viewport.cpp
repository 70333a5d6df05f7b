#include "portable/grid/Viewport.h"

#include <algorithm>

namespace zu::grid {

namespace {

/// The scroll bar's own arithmetic stays clear of its limits with this many positions.
constexpr Row kMostPositions = Row{1} << 30;

}  // namespace

void Viewport::SetMetrics(int rowHeight, int headerHeight) {
    rowHeight_ = std::max(rowHeight, 1);
    headerHeight_ = std::max(headerHeight, 0);
    Clamp();
}

void Viewport::SetSize(int width, int height) {
    width_ = std::max(width, 0);
    height_ = std::max(height, 0);
    Clamp();
}

void Viewport::SetContent(Row rows, int contentWidth) {
    rows_ = std::max(rows, kHeaderRows);
    contentWidth_ = std::max(contentWidth, 0);
    Clamp();
}

Row Viewport::fullRows() const noexcept {
    return std::max<Row>(1, (height_ - headerHeight_) / rowHeight_);
}

Row Viewport::visibleEnd() const noexcept {
    const Row space = std::max(height_ - headerHeight_, 0);
    return std::min(rows_, top_ + (space + rowHeight_ - 1) / rowHeight_);
}

std::optional<Row> Viewport::RowAt(int y) const noexcept {
    if (y < headerHeight_ || y >= height_) return std::nullopt;
    const Row row = top_ + (y - headerHeight_) / rowHeight_;
    if (row >= rows_) return std::nullopt;
    return row;
}

bool Viewport::ScrollToRow(Row row) {
    const Row before = top_;
    top_ = row;
    Clamp();
    return top_ != before;
}

bool Viewport::ScrollToLeft(int x) {
    const int before = left_;
    left_ = x;
    Clamp();
    return left_ != before;
}

bool Viewport::ShowRow(Row row) {
    if (row < kHeaderRows) return false;
    if (row < top_) return ScrollToRow(row);
    if (row >= top_ + fullRows()) return ScrollToRow(row - fullRows() + 1);
    return false;
}

bool Viewport::ShowColumn(int left, int right) {
    int wanted = left_;
    if (right > wanted + width_) wanted = right - width_;
    if (left < wanted) wanted = left;
    return ScrollToLeft(wanted);
}

ScrollPositions Viewport::Vertical() const noexcept {
    const Row scale = Scale();
    const Row records = rows_ - kHeaderRows;
    return {static_cast<int>(std::max<Row>(records - 1, 0) / scale),
            static_cast<int>(std::max<Row>(std::min(fullRows(), records) / scale, 1)),
            static_cast<int>((top_ - kHeaderRows) / scale)};
}

Row Viewport::RowOfPosition(int position) const noexcept {
    return kHeaderRows + std::max(position, 0) * Scale();
}

ScrollPositions Viewport::Horizontal() const noexcept {
    return {std::max(contentWidth_ - 1, 0), width_, left_};
}

Row Viewport::LastTop() const noexcept {
    return std::max(kHeaderRows, rows_ - fullRows());
}

Row Viewport::Scale() const noexcept {
    return (rows_ - kHeaderRows) / kMostPositions + 1;
}

void Viewport::Clamp() {
    top_ = std::clamp(top_, kHeaderRows, LastTop());
    left_ = std::clamp(left_, 0, std::max(contentWidth_ - width_, 0));
}

}  // namespace zu::grid
