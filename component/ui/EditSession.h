#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "component/ui/GridLoader.h"
#include "component/ui/GridScreen.h"
#include "component/ui/GridView.h"
#include "portable/grid/Columns.h"
#include "portable/grid/EnterDirection.h"
#include "portable/grid/GridRows.h"

namespace zu::component {

/// What one "Find Next" asks for.
struct SearchRequest {
    std::wstring text;
    LONG column = 0;  ///< counted from 0 over the data columns
    bool fromTop = false;
    bool loop = false;
    bool pattern = false;
};

/// A grid at work on a view, without windows: the current cell, the record being edited, and every call on
/// the view. Opening throws ComError; all later operations swallow failures, as handlers of window events
/// must, and leave a state in which the user can go on.
///
/// A changed record is saved when the user leaves its row. Leaving the window, adding a record and searching
/// ask first.
class EditSession {
public:
    EditSession(com::ComPtr<ZuDataView> view, GridScreen& screen);

    /// The caption's addition and the buttons of edit mode.
    void OpenForEditing(bool allowUndelete, const VARIANT& direction);
    void OpenForPicking();
    /// Lays the grid out; after it the screen may ask for rows and columns.
    void Load(const TextWidth& width);
    /// Loads what can be seen and goes to the first cell.
    void Start() noexcept;

    const grid::GridRows& rows() const noexcept { return rows_; }
    grid::Columns& columns() noexcept { return columns_; }
    const grid::Columns& columns() const noexcept { return columns_; }
    grid::Extent extent() const noexcept { return {rows_.count(), columns_.count()}; }
    grid::Cell current() const noexcept { return current_; }
    bool isUpdateable() const noexcept { return updateable_; }
    bool isReadOnly() const noexcept { return readOnly_; }
    bool isDirty() const noexcept { return dirty_; }
    bool isAdding() const noexcept { return adding_; }
    /// The texts of a row; null until it was loaded.
    const grid::LoadedRow* Loaded(grid::Row row) const { return rows_.Loaded(row); }
    /// The text of a cell as shown; empty for rows that are not loaded.
    std::wstring TextAt(grid::Cell cell) const;

    /// Loads the rows of the screen that are not loaded yet.
    void LoadVisible() noexcept;

    /// Makes a cell current. A changed record is saved when its row is left; false when that was refused, or
    /// the cell is none.
    bool MoveTo(grid::Cell cell) noexcept;

    /// Whether the current cell can be edited; with a note to the user when its kind of field cannot.
    bool CanEdit() noexcept;
    /// The text to edit; nothing when the cell cannot be edited.
    std::optional<std::wstring> BeginEdit() noexcept;
    /// Stores a typed text in the cell being edited. False when the field refused it: the user has been told
    /// why, and nothing was changed.
    bool Accept(std::wstring_view text) noexcept;
    /// The cell to edit after Enter; the current one when the cursor stays.
    grid::Cell CellAfterEnter() const { return grid::NextCell(current_, direction_, extent()); }
    LONG CurrentType() noexcept;

    void Add() noexcept;
    void SetDeleted(bool deleted) noexcept;
    /// Saves the current record. False when it was not saved, after a message.
    bool Save() noexcept;
    /// Asks what to do with unsaved changes. False when the user wants to go on editing.
    bool ConfirmPending() noexcept;
    /// Drops the changes of the current record without a question.
    void Discard() noexcept;
    /// Finds and goes to the next record; `request.fromTop` is used up. The caller has confirmed nothing.
    void Find(SearchRequest& request) noexcept;
    void ShowStatus() noexcept;

    /// The view on the chosen record. Throws ComError.
    com::ComPtr<ZuDataView> ChosenView();

private:
    enum : LONG { kNowhere = -1 };

    LONG RecordOf(grid::Row row) const { return static_cast<LONG>(rows_.RowData(row)); }
    bool IsNewRow(grid::Row row) const noexcept { return adding_ && row == current_.row; }
    /// Makes the record of a row the view's current one, unless it is already.
    void Enter(grid::Row row);
    void LoadRow(grid::Row row);
    grid::LoadedRow ReadThroughFields(grid::Row row);
    grid::LoadedRow ReadCells(grid::Row row);
    void ReloadCurrent();
    void RefreshStatus();
    void MarkDirty(bool dirty);
    void DropChanges();
    void RemoveCurrentRow();
    bool SaveRecord();
    bool Matches(LONG record, const SearchRequest& request) const;

    GridView view_;
    GridScreen& screen_;
    grid::GridRows rows_;
    grid::Columns columns_;
    grid::Cell current_{grid::kHeaderRows, grid::kFixedColumns};
    grid::Cell edited_{grid::kHeaderRows, grid::kFixedColumns};
    grid::EnterDirection direction_ = grid::EnterDirection::kStay;
    LONG position_ = kNowhere;  ///< the record that the view stands on, as far as known
    bool updateable_ = false;
    bool readOnly_ = true;
    bool undeleteAllowed_ = false;
    bool dirty_ = false;
    bool adding_ = false;
};

}  // namespace zu::component
