#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

#include "component/ui/CellNote.h"
#include "portable/grid/Cell.h"

namespace zu::component {

/// The whole text of a cell that is cut off, below the cell while the mouse rests on it.
class CellTip {
public:
    /// The mouse of `window` is over this cell, or over none. Over another one than before the tip goes, and
    /// the window is told by WM_MOUSEHOVER when the mouse rests and by WM_MOUSELEAVE when it leaves.
    void MouseOver(HWND window, std::optional<grid::Cell> cell) noexcept;
    /// The cell under the mouse.
    const std::optional<grid::Cell>& cell() const noexcept { return cell_; }

    /// `place` is the cell in the coordinates of `window`. Of very long texts the beginning is shown.
    void Show(HWND window, const RECT& place, std::wstring_view text);
    void Hide() noexcept { note_.Hide(); }
    bool isVisible() const noexcept { return note_.isVisible(); }

private:
    CellNote note_{CellNote::Form::kPlain};
    std::optional<grid::Cell> cell_;
};

}  // namespace zu::component
