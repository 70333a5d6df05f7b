#include "portable/grid/Columns.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace zu::grid {

void Columns::Add(Column column) {
    columns_.push_back(std::move(column));
}

int Columns::Left(int column) const {
    int left = 0;
    for (int i = 0; i < std::min(column, count()); ++i)
        left += (*this)[i].width;
    return left;
}

std::optional<int> Columns::At(int x) const {
    if (x < 0) return std::nullopt;
    int right = 0;
    for (int i = 0; i < count(); ++i) {
        right += (*this)[i].width;
        if (x < right) return i;
    }
    return std::nullopt;
}

std::optional<int> Columns::EdgeAt(int x, int reach) const {
    std::optional<int> found;
    int right = 0;
    for (int i = 0; i < count(); ++i) {
        right += (*this)[i].width;
        if (i >= kFixedColumns && std::abs(x - right) <= reach) found = i;
    }
    return found;
}

void Columns::SetWidth(int column, int width) {
    if (column < kFixedColumns || column >= count()) return;
    columns_[static_cast<std::size_t>(column)].width = std::max(width, kLeastWidth);
}

void Columns::Scale(int numerator, int denominator) {
    if (denominator <= 0) return;
    for (int i = kFixedColumns; i < count(); ++i) {
        const long long width = static_cast<long long>((*this)[i].width) * numerator / denominator;
        SetWidth(i, static_cast<int>(width));
    }
}

}  // namespace zu::grid
