#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "com/ComPtr.h"
#include "component/ui/CellNote.h"
#include "component/ui/CellTip.h"
#include "component/ui/Drawing.h"
#include "component/ui/EditSession.h"
#include "component/ui/GridAccessible.h"
#include "component/ui/Window.h"
#include "portable/grid/KeyCommand.h"
#include "portable/grid/Viewport.h"

namespace zu::component {

/// What the grid leaves to its form.
class GridOwner {
public:
    virtual ~GridOwner() = default;
    /// A key or a menu entry other than a motion.
    virtual void Perform(grid::Command command) = 0;
    /// A character that begins an edit.
    virtual void TypeInto(wchar_t character) = 0;
    /// A double click on a cell.
    virtual void CellActivated() = 0;
    /// Called before anything that moves: an open editor stores its text. False keeps everything as it is.
    virtual bool FinishEdit() = 0;
    /// Rows came into view, or the cells moved on the screen.
    virtual void GridScrolled() = 0;
    /// Entries of the context menu that make no sense now are grey.
    virtual bool CanPerform(grid::Command command) = 0;
};

/// The grid control: two header rows that stay, a hidden fixed column, rows that are loaded when they come
/// into view, any number of them.
///
/// Other programs (screen readers, tests) reach it by its accessible object, by its window text, which is the
/// text of the current cell, and by the message StateMessage().
class fgGrid final : public Window {
public:
    /// `session` and `owner` outlive the grid.
    fgGrid(EditSession& session, GridOwner& owner) noexcept : session_(session), owner_(owner) {}
    ~fgGrid() override;

    void Open(HWND parent, int id);
    /// The width of a column that shows a text without cutting it off.
    int ColumnWidth(std::wstring_view text) const;

    const grid::Viewport& viewport() const noexcept { return viewport_; }
    const EditSession& session() const noexcept { return session_; }
    const Fonts& fonts() const { return *fonts_; }
    /// Takes the resolution of its screen.
    void Rescale();

    /// Rows or columns changed.
    void ContentChanged();
    void ShowCurrent();
    void ScrollTo(grid::Row row);
    void RedrawRow(grid::Row row);
    /// The current cell inside the window.
    RECT CellPlace(grid::Cell cell) const;
    /// Beside the current cell, and below what reaches down to `bottom` there.
    void Explain(std::wstring_view note, LONG bottom);
    void HideNote() noexcept { note_.Hide(); }
    void CopyCells(bool wholeRow, bool headings);

    /// A registered message that answers a number about the grid. Its WPARAM is one of State.
    static UINT StateMessage() noexcept;
    enum State : WPARAM {
        kCurrentRow,
        kCurrentColumn,
        kRowCount,
        kColumnCount,
        kTopRow,
        kVisibleEnd,
        kLoadedRows,
        kIsEditing,
        kIsDirty,
        kColumnWidth,  ///< of the column in LPARAM
        kColumnLeft,   ///< of the column in LPARAM, in the window
        kHeaderHeight,
        kRowHeight,
        kNoteShown,
        kTipShown,  ///< the whole text of a cell that is cut off
    };

protected:
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint();
    void UpdateScrollBars();
    void Scroll(bool vertical, WORD code);
    void Wheel(int delta, bool sideways);
    void Moved();
    bool KeyDown(unsigned key);
    void MouseDown(POINT at);
    void MouseMove(POINT at);
    void ShowTip();
    bool IsCutOff(grid::Cell cell, std::wstring_view text) const;
    void MouseDoubleClick(POINT at);
    void DragColumn(int x);
    void FitColumn(int column);
    std::optional<int> EdgeUnder(POINT at) const;
    std::optional<grid::Cell> CellUnder(POINT at) const;
    void ContextMenu(POINT at);
    void FocusChanged();
    LRESULT Answer(WPARAM what, LPARAM which) const;
    LRESULT GiveText(WPARAM size, LPARAM buffer) const;

    EditSession& session_;
    GridOwner& owner_;
    std::unique_ptr<Fonts> fonts_;
    int dpi_ = USER_DEFAULT_SCREEN_DPI;
    grid::Viewport viewport_;
    CellNote note_{CellNote::Form::kBalloon};
    CellTip tip_;
    com::ComPtr<GridAccessible> accessible_;
    std::optional<int> dragged_;  ///< the column being resized
    int dragOffset_ = 0;
    int wheelRest_ = 0;
    bool focused_ = false;
    SCROLLINFO shown_[2]{};  ///< what the scroll bars show: drawing them again is dear
};

}  // namespace zu::component
