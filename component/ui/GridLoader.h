#pragma once

#include <functional>
#include <string_view>

#include "component/ui/GridView.h"
#include "portable/grid/Columns.h"
#include "portable/grid/GridRows.h"

namespace zu::component {

/// The width of a text in the grid's font, in pixels.
using TextWidth = std::function<int(std::wstring_view)>;

/// Lays the grid of a view out: one column a field, headings, formats, widths and alignments, one row a
/// record. The data cells stay empty, whatever the number of records. Throws ComError when the view fails and
/// std::bad_alloc when there is no memory for the grid; what was laid out by then stays.
void LoadGrid(GridView& view, const TextWidth& width, grid::GridRows& rows, grid::Columns& columns);

}  // namespace zu::component
