#pragma once

#include <string_view>

#include "portable/grid/Cell.h"

namespace zu::grid {

/// Where the cell cursor goes after a value was accepted with Enter.
enum class EnterDirection { kStay = 0, kRight = 1, kLeft = 2, kDown = 3, kUp = 4 };

/// Numbers 1 to 4; every other one stays.
EnterDirection DirectionOf(double number) noexcept;
/// "RIGHT", "LEFT", "DOWN", "UP" in any mix of case; every other word stays.
EnterDirection DirectionOf(std::u16string_view word);

/// The next cell to edit; `from` itself when the cursor stays or stands at the edge.
Cell NextCell(Cell from, EnterDirection direction, const Extent& extent);

}  // namespace zu::grid
