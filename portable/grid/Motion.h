#pragma once

#include "portable/grid/Cell.h"

namespace zu::grid {

/// Ways to move the current cell.
enum class Motion {
    kLeft,
    kRight,
    kUp,
    kDown,
    kPageUp,
    kPageDown,
    kRowStart,
    kRowEnd,
    kFirstRow,
    kLastRow,
    kFirstCell,
    kLastCell
};

/// The cell that a motion leads to: never out of the data cells, never around an edge. `page` is the number
/// of rows that a page moves. A grid without cells answers `from`.
Cell Moved(Cell from, Motion motion, const Extent& extent, Row page);

}  // namespace zu::grid
