#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "component/ui/Window.h"
#include "portable/grid/KeyCommand.h"

namespace zu::component {

/// What the cell editor asks of its form.
class EditorOwner {
public:
    virtual ~EditorOwner() = default;
    virtual void PerformInEditor(grid::EditorCommand command) = 0;
    /// The focus went to another window of the form.
    virtual void EditorLeft() = 0;
};

/// The cell editor: a text box over the cell, and beside it the toolbar tbEditBox with "Store", "Discard" and
/// "Larger", which is hidden while the text box does not have the focus.
class txEditBox {
public:
    explicit txEditBox(EditorOwner& owner) noexcept : owner_(owner) {}
    ~txEditBox() { Close(); }
    txEditBox(const txEditBox&) = delete;
    txEditBox& operator=(const txEditBox&) = delete;

    /// How the text is laid out.
    struct Look {
        HFONT font = nullptr;
        bool rightAligned = false;
        bool severalLines = false;
        LONG mostCharacters = 0;  ///< 0: no limit
    };
    /// Opens over a cell of the grid, with all of the text selected.
    void Open(HWND grid, const RECT& cell, std::wstring_view text, const Look& look);
    /// Replaces the text by what the user typed; the caret stands behind it.
    void ReplaceBy(wchar_t character);
    void Close() noexcept;
    bool isOpen() const noexcept { return edit_ != nullptr; }

    void MoveTo(const RECT& cell);
    /// Where the box and its toolbar end, in the coordinates of the grid.
    LONG Bottom() const noexcept;
    /// A box of several lines, for long texts.
    void Enlarge();
    void SelectNothing();
    void InsertLineEnd();

    std::wstring Text() const { return TextOf(edit_); }
    /// Whether the text was changed since it was opened or last accepted.
    bool isChanged() const;
    void SetUnchanged();
    void TakeFocus() noexcept;
    HWND handle() const noexcept { return edit_; }

    /// Handles the toolbar's WM_COMMAND; false for another sender.
    bool OnCommand(WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void CreateEdit(std::wstring_view text);
    void CreateToolbar();
    void Place();
    grid::EditorCommand CommandOf(WPARAM key) const;

    EditorOwner& owner_;
    HWND grid_ = nullptr;
    HWND edit_ = nullptr;
    HWND toolbar_ = nullptr;
    WNDPROC original_ = nullptr;
    RECT cell_{};
    Look look_;
    bool closing_ = false;
};

}  // namespace zu::component
