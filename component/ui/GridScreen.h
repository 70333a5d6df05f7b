#pragma once

#include <string_view>

#include "portable/grid/Cell.h"

namespace zu::component {

enum class Button { kSelect, kCancel, kSearch, kUpdate, kExit, kAdd, kEdit, kUndelete, kDelete };

enum class Answer { kYes, kNo, kCancel };

/// What an edit session shows and asks: the form, or a recorder in tests. Nothing here fails.
class GridScreen {
public:
    virtual ~GridScreen() = default;

    virtual void ShowButton(Button button, bool visible) = 0;
    virtual void EnableButton(Button button, bool enabled) = 0;
    virtual void ShowDeleted(bool deleted) = 0;
    virtual void ShowPosition(std::wstring_view text) = 0;

    /// A message with an OK button and no title.
    virtual void Tell(std::wstring_view message) = 0;
    /// A question with Yes, No and Cancel.
    virtual Answer Ask(std::wstring_view question) = 0;
    /// Explains something beside the current cell.
    virtual void Explain(std::wstring_view note) = 0;

    /// The rows of which anything can be seen: from the first to before the second.
    virtual grid::Row TopRow() const = 0;
    virtual grid::Row VisibleEnd() const = 0;
    /// Scrolls a row to the top.
    virtual void ScrollTo(grid::Row row) = 0;

    /// Another cell is current: it comes into view.
    virtual void CurrentCellChanged() = 0;
    /// There are more or fewer rows, or their texts changed.
    virtual void RowsChanged() = 0;
    virtual void RowChanged(grid::Row row) = 0;
    /// Hides the window, which ends the modal loop.
    virtual void Close() = 0;
};

}  // namespace zu::component
