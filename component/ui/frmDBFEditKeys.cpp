// The form's editing and searching: what the keys, the menu, the cell editor and the search dialog ask for.
#include <algorithm>

#include "com/Bstr.h"
#include "component/engine/Trapped.h"
#include "component/ui/Clipboard.h"
#include "component/ui/FieldType.h"
#include "component/ui/frmDBFEdit.h"
#include "portable/grid/PlainText.h"

namespace zu::component {

using grid::Cell;
using grid::Command;
using grid::EditorCommand;
using grid::kFixedColumns;

void frmDBFEdit::Perform(Command command) {
    switch (command) {
        case Command::kEdit:
            BeginEdit();
            break;
        case Command::kEnter:
            CellActivated();
            break;
        case Command::kToggle:
            ToggleBoolean();
            break;
        case Command::kClear:
            StoreWithoutEditor({});
            break;
        case Command::kAdd:
            OnButton(Button::kAdd);
            break;
        case Command::kToggleDeleted:
            OnButton(buttons_->isShown(Button::kDelete) ? Button::kDelete : Button::kUndelete);
            break;
        case Command::kSearch:
            OnButton(Button::kSearch);
            break;
        case Command::kFindNext:
            FindNext();
            break;
        case Command::kCopyCell:
            grid_->CopyCells(false, false);
            break;
        case Command::kCopyRow:
            grid_->CopyCells(true, false);
            break;
        case Command::kCopyRowWithHeadings:
            grid_->CopyCells(true, true);
            break;
        case Command::kPaste:
            Paste();
            break;
        case Command::kEscape:
            Escape();
            break;
        case Command::kMove:
        case Command::kNone:
            break;
    }
}

bool frmDBFEdit::CanPerform(Command command) {
    const bool onRecord = session_->rows().IsDataRow(session_->current().row);
    switch (command) {
        case Command::kEdit:
        case Command::kClear:
        case Command::kPaste:
            return onRecord && !session_->isReadOnly();
        case Command::kAdd:
            return !session_->isReadOnly();
        case Command::kToggleDeleted:
            return onRecord && (buttons_->isShown(Button::kDelete) || buttons_->isShown(Button::kUndelete));
        case Command::kFindNext:
            return search_ && !search_->searchText().empty();
        case Command::kSearch:
            return true;
        default:
            return onRecord;
    }
}

void frmDBFEdit::CellActivated() {
    if (picking_) {
        if (session_->rows().IsDataRow(session_->current().row)) OnButton(Button::kSelect);
    } else {
        BeginEdit();
    }
}

void frmDBFEdit::TypeInto(wchar_t character) {
    BeginEdit();
    if (editor_.isOpen()) editor_.ReplaceBy(character);
}

void frmDBFEdit::BeginEdit() {
    grid_->HideNote();
    const auto text = session_->BeginEdit();
    if (!text) {
        SetFocus(grid_->handle());
        return;
    }
    grid_->ShowCurrent();
    const grid::Column& column = session_->columns()[session_->current().column];
    txEditBox::Look look;
    look.font = grid_->fonts().plain.get();
    look.rightAligned = column.alignment == grid::Alignment::kRight;
    look.severalLines = column.type == kLongTextField;
    editor_.Open(grid_->handle(), grid_->CellPlace(session_->current()), *text, look);
}

bool frmDBFEdit::StoreEdit() {
    if (!editor_.isOpen() || !editor_.isChanged()) return true;
    const std::wstring text = editor_.Text();
    if (!session_->Accept(text)) return false;
    editor_.SetUnchanged();
    return true;
}

void frmDBFEdit::EndEdit() {
    const bool hadFocus = GetFocus() == editor_.handle();
    editor_.Close();
    if (hadFocus) SetFocus(grid_->handle());
}

bool frmDBFEdit::FinishEdit() {
    if (!editor_.isOpen()) return true;
    if (!StoreEdit()) {
        editor_.TakeFocus();
        return false;
    }
    EndEdit();
    return true;
}

void frmDBFEdit::EditorLeft() {
    // The refused text stays in its box; the box takes the focus back when the form is asked to go on.
    if (StoreEdit()) editor_.Close();
}

void frmDBFEdit::EditNext(Cell cell) {
    const bool moves = cell != session_->current();
    if (!StoreEdit()) return;
    EndEdit();
    if (moves && session_->MoveTo(cell)) BeginEdit();
}

void frmDBFEdit::PerformInEditor(EditorCommand command) {
    const Cell current = session_->current();
    switch (command) {
        case EditorCommand::kAccept:
            EditNext(session_->CellAfterEnter());
            break;
        case EditorCommand::kCancel:
            grid_->HideNote();
            EndEdit();
            break;
        case EditorCommand::kNextCell:
            EditNext(grid::Moved(current, grid::Motion::kRight, session_->extent(), 1));
            break;
        case EditorCommand::kPreviousCell:
            EditNext(grid::Moved(current, grid::Motion::kLeft, session_->extent(), 1));
            break;
        case EditorCommand::kRowDown:
            EditNext(grid::Moved(current, grid::Motion::kDown, session_->extent(), 1));
            break;
        case EditorCommand::kRowUp:
            EditNext(grid::Moved(current, grid::Motion::kUp, session_->extent(), 1));
            break;
        case EditorCommand::kNewLine:
            editor_.InsertLineEnd();
            break;
        case EditorCommand::kSelectNothing:
            editor_.SelectNothing();
            break;
        case EditorCommand::kFindNext:
            if (FinishEdit()) FindNext();
            break;
        case EditorCommand::kNone:
            break;
    }
}

void frmDBFEdit::StoreWithoutEditor(std::wstring_view text) {
    if (session_->BeginEdit()) session_->Accept(text);
}

void frmDBFEdit::ToggleBoolean() {
    if (session_->CurrentType() != kBooleanField) {
        if (!picking_) TypeInto(L' ');
        return;
    }
    const auto text = session_->BeginEdit();
    if (text) session_->Accept(*text == L"True" ? L"False" : L"True");
}

void frmDBFEdit::Paste() {
    const auto text = ClipboardText(handle());
    if (!text) return;
    const std::u16string_view cell = grid::WithoutFinalLineEnd(com::AsUtf16(*text));
    StoreWithoutEditor(com::AsWide(cell));
}

void frmDBFEdit::Escape() {
    if (editor_.isOpen()) {
        PerformInEditor(EditorCommand::kCancel);
    } else if (session_->isDirty()) {
        session_->Discard();
    } else {
        OnButton(picking_ ? Button::kCancel : Button::kExit);
    }
}

void frmDBFEdit::GridScrolled() {
    if (!editor_.isOpen()) return;
    if (FinishEdit()) return;
    editor_.MoveTo(grid_->CellPlace(session_->current()));
}

void frmDBFEdit::OpenSearch() {
    if (!session_->ConfirmPending()) return;
    Trap([&] {
        if (!search_) {
            search_ = std::make_unique<clsSearch>(handle(), [this](clsSearch& search) { DoSearch(search); });
            for (int column = kFixedColumns; column < session_->columns().count(); ++column)
                search_->AddField(com::AsWide(session_->columns()[column].caption), column - kFixedColumns);
        }
        search_->Display(session_->current().column - kFixedColumns);
    });
}

void frmDBFEdit::DoSearch(clsSearch& search) {
    SearchRequest request = search.request();
    session_->Find(request);
    search.SetFromTop(request.fromTop);
}

void frmDBFEdit::FindNext() {
    if (!search_ || search_->searchText().empty()) {
        OnButton(Button::kSearch);
        return;
    }
    if (FinishEdit()) DoSearch(*search_);
}

}  // namespace zu::component
