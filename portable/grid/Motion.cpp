#include "portable/grid/Motion.h"

#include <algorithm>

namespace zu::grid {

Cell Moved(Cell from, Motion motion, const Extent& extent, Row page) {
    if (!extent.hasCells()) return from;
    const Row lastRow = extent.rows - 1;
    const int lastColumn = extent.columns - 1;
    switch (motion) {
        case Motion::kLeft:
            --from.column;
            break;
        case Motion::kRight:
            ++from.column;
            break;
        case Motion::kUp:
            --from.row;
            break;
        case Motion::kDown:
            ++from.row;
            break;
        case Motion::kPageUp:
            from.row -= page;
            break;
        case Motion::kPageDown:
            from.row += page;
            break;
        case Motion::kRowStart:
            from.column = kFixedColumns;
            break;
        case Motion::kRowEnd:
            from.column = lastColumn;
            break;
        case Motion::kFirstRow:
            from.row = kHeaderRows;
            break;
        case Motion::kLastRow:
            from.row = lastRow;
            break;
        case Motion::kFirstCell:
            from = {kHeaderRows, kFixedColumns};
            break;
        case Motion::kLastCell:
            from = {lastRow, lastColumn};
            break;
    }
    return {std::clamp(from.row, kHeaderRows, lastRow), std::clamp(from.column, kFixedColumns, lastColumn)};
}

}  // namespace zu::grid
