#pragma once

#include <cstdint>

namespace zu::grid {

/// Rows and columns are counted from 0 over everything, header rows and fixed columns included.
using Row = std::int64_t;

/// Row 0 holds the captions, row 1 the display formats; records follow.
inline constexpr Row kHeaderRows = 2;
/// Column 0 is the hidden mark of loaded rows.
inline constexpr int kFixedColumns = 1;

struct Cell {
    Row row = 0;
    int column = 0;
    bool operator==(const Cell&) const = default;
};

/// The extent of a grid, for motions in it.
struct Extent {
    Row rows = kHeaderRows;
    int columns = kFixedColumns;
    bool hasCells() const noexcept { return rows > kHeaderRows && columns > kFixedColumns; }
};

}  // namespace zu::grid
