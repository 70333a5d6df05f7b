#pragma once

#include <optional>
#include <string>
#include <vector>

#include "portable/grid/Cell.h"

namespace zu::grid {

enum class Alignment { kLeft = 0, kRight = 1, kCentre = 2 };

/// What the grid knows of one column.
struct Column {
    std::u16string caption;  ///< header row 0
    std::u16string format;   ///< header row 1; empty for none
    Alignment alignment = Alignment::kLeft;
    int width = 0;  ///< pixels; 0 hides the column
    long type = 0;  ///< type code of the field
};

/// The columns of a grid side by side. Positions are pixels from the left edge of the first one.
class Columns {
public:
    /// The hidden fixed column alone.
    Columns() : columns_(kFixedColumns) {}

    void Add(Column column);
    int count() const noexcept { return static_cast<int>(columns_.size()); }
    const Column& operator[](int column) const { return columns_[static_cast<std::size_t>(column)]; }

    int Left(int column) const;
    int totalWidth() const { return Left(count()); }
    /// The column at a position; none left of the first and right of the last one.
    std::optional<int> At(int x) const;
    /// The column whose right edge lies within `reach` of the position: the one that a drag there resizes. Of
    /// several the right one, so that a column dragged to nothing can be dragged out again.
    std::optional<int> EdgeAt(int x, int reach) const;
    /// Fixed columns keep their width; others keep at least `kLeastWidth`.
    void SetWidth(int column, int width);
    /// All widths by a factor, for another resolution.
    void Scale(int numerator, int denominator);

    static constexpr int kLeastWidth = 8;

private:
    std::vector<Column> columns_;
};

}  // namespace zu::grid
