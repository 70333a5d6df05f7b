#pragma once

#include <windows.h>

#include "component/ui/Drawing.h"
#include "component/ui/EditSession.h"
#include "portable/grid/Viewport.h"

namespace zu::component {

/// Draws a grid into a device context: two header rows, the visible cells, the current cell, deleted records.
/// It reads what was loaded and never calls the view.
class GridPainter {
public:
    GridPainter(const EditSession& session, const grid::Viewport& viewport, const Fonts& fonts,
                int dpi) noexcept
        : session_(session), viewport_(viewport), fonts_(fonts), dpi_(dpi) {}

    void Paint(HDC context, const RECT& client, bool focused) const;
    /// Space left and right of a cell's text.
    static int Padding(int dpi) noexcept { return Scaled(5, dpi); }

private:
    void PaintHeader(HDC context, const RECT& client) const;
    void PaintRow(HDC context, const RECT& client, grid::Row row, bool focused) const;
    void PaintCell(HDC context, const RECT& cell, grid::Cell at, bool focused) const;
    void PaintEmpty(HDC context, const RECT& client) const;
    void DrawCellText(HDC context, RECT cell, std::wstring_view text, grid::Alignment alignment) const;
    RECT PlaceOf(int column, int top, int height) const;

    const EditSession& session_;
    const grid::Viewport& viewport_;
    const Fonts& fonts_;
    int dpi_;
};

}  // namespace zu::component
