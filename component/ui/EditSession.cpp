#include "component/ui/EditSession.h"

#include <new>
#include <utility>

#include "com/ComError.h"
#include "component/engine/Trapped.h"
#include "component/ui/CellText.h"
#include "component/ui/EngineTexts.h"
#include "component/ui/FieldType.h"
#include "component/ui/TypedValue.h"
#include "portable/grid/SearchText.h"

namespace zu::component {

using com::Check;
using com::ComError;
using com::Variant;
using grid::Cell;
using grid::kFixedColumns;
using grid::kHeaderRows;
using grid::LoadedRow;
using grid::Row;

namespace {

constexpr std::wstring_view kTooMuchData = L"Too much data to display in a Grid.\r\nTry selecting less data";
constexpr std::wstring_view kNotSaved = L"Unable to update Record";

grid::EnterDirection DirectionOf(const VARIANT& direction) {
    const VARIANT& content = com::Dereference(direction);
    if (com::IsMissing(content)) return grid::EnterDirection::kStay;
    if (const auto word = com::TextOf(content)) return grid::DirectionOf(com::AsUtf16(*word));
    VARTYPE type = content.vt;
    if (type & VT_BYREF) type = static_cast<VARTYPE>(type & ~VT_BYREF);
    if (type == VT_EMPTY || type == VT_NULL || type == VT_BOOL || type == VT_DATE || type >= VT_ARRAY ||
        type == VT_DISPATCH || type == VT_UNKNOWN)
        return grid::EnterDirection::kStay;
    return grid::DirectionOf(com::Convert(content, VT_R8)->dblVal);
}

/// What a field of this type takes, for somebody who typed something else.
const wchar_t* Expected(LONG type) noexcept {
    if (IsNumber(type)) return L"A number is expected here.";
    if (type == kDateField) return L"A date is expected here.";
    if (type == kBooleanField) return L"Yes or No is expected here.";
    return L"This text does not fit the type of the field.";
}

std::wstring Reason(const ComError& error, LONG type) {
    if (error.code() == com::kOverflow || error.code() == DISP_E_OVERFLOW)
        return L"This number is too great for the field.";
    if (error.code() == com::kTypeMismatch || error.code() == DISP_E_TYPEMISMATCH) return Expected(type);
    return error.description().empty() ? L"The field refused this value." : error.description();
}

}  // namespace

EditSession::EditSession(com::ComPtr<ZuDataView> view, GridScreen& screen)
    : view_(std::move(view)), screen_(screen) {}

void EditSession::OpenForEditing(bool allowUndelete, const VARIANT& direction) {
    updateable_ = view_.Updateable();
    readOnly_ = !updateable_;
    direction_ = DirectionOf(direction);
    undeleteAllowed_ = updateable_ && allowUndelete;
    for (const Button button : {Button::kAdd, Button::kUpdate, Button::kDelete, Button::kEdit})
        screen_.ShowButton(button, updateable_);
    screen_.ShowButton(Button::kExit, true);
    screen_.EnableButton(Button::kUpdate, false);
    view_.DeletedField();
}

void EditSession::OpenForPicking() {
    screen_.ShowButton(Button::kCancel, true);
    screen_.ShowButton(Button::kSelect, true);
    readOnly_ = true;
    view_.DeletedField();
}

void EditSession::Load(const TextWidth& width) {
    try {
        LoadGrid(view_, width, rows_, columns_);
    } catch (const std::bad_alloc&) {
        screen_.Tell(kTooMuchData);
    }
}

void EditSession::Start() noexcept {
    LoadVisible();
    current_ = edited_ = {kHeaderRows, kFixedColumns};
    if (rows_.count() > kHeaderRows)
        MoveTo(current_);
    else
        ShowStatus();
}

std::wstring EditSession::TextAt(Cell cell) const {
    const LoadedRow* const row = rows_.Loaded(cell.row);
    if (!row || cell.column < kFixedColumns) return {};
    return std::wstring(com::AsWide(row->Text(static_cast<std::size_t>(cell.column - kFixedColumns))));
}

void EditSession::LoadVisible() noexcept {
    Trap([&] {
        const Row end = std::min(screen_.VisibleEnd(), rows_.count());
        for (Row row = std::max(screen_.TopRow(), kHeaderRows); row < end; ++row)
            if (!rows_.Loaded(row)) LoadRow(row);
    });
}

void EditSession::Enter(Row row) {
    const LONG record = RecordOf(row);
    if (position_ == record) return;
    position_ = kNowhere;
    view_.Move(record);
    position_ = record;
}

void EditSession::LoadRow(Row row) {
    if (IsNewRow(row) || RecordOf(row) >= view_.RecordCount()) {
        rows_.Load(row, {});
        return;
    }
    // Moving the view would let go of the changes of the record being edited.
    rows_.Load(row, dirty_ ? ReadCells(row) : ReadThroughFields(row));
}

LoadedRow EditSession::ReadThroughFields(Row row) {
    Enter(row);
    LoadedRow texts;
    for (int column = kFixedColumns; column < columns_.count(); ++column) {
        const Variant value = ValueOf(view_.Field(column - kFixedColumns));
        texts.Append(com::AsUtf16(CellText(value, com::AsWide(columns_[column].format))));
    }
    Trap([&] { texts.SetDeleted(ValueOf(view_.DeletedField()).ToBoolean()); });
    return texts;
}

LoadedRow EditSession::ReadCells(Row row) {
    LoadedRow texts;
    for (int column = kFixedColumns; column < columns_.count(); ++column) {
        const Variant value = view_.CellValue(RecordOf(row), column - kFixedColumns);
        texts.Append(com::AsUtf16(CellText(value, com::AsWide(columns_[column].format))));
    }
    return texts;
}

bool EditSession::MoveTo(Cell cell) noexcept {
    if (!rows_.IsDataRow(cell.row) || cell.column < kFixedColumns || cell.column >= columns_.count())
        return false;
    if (cell.row != current_.row && dirty_ && !Save()) return false;
    // A record that was saved elsewhere in the meantime may have left the view.
    if (!rows_.IsDataRow(cell.row)) return false;
    current_ = cell;
    screen_.CurrentCellChanged();
    LoadVisible();
    Trap([&] {
        if (!adding_) Enter(current_.row);
    });
    ShowStatus();
    return true;
}

void EditSession::ShowStatus() noexcept {
    Trap([&] { RefreshStatus(); });
}

void EditSession::RefreshStatus() {
    if (!rows_.Contains(current_.row)) {
        screen_.ShowPosition({});
        for (const Button button : {Button::kDelete, Button::kUndelete, Button::kEdit})
            screen_.EnableButton(button, false);
        screen_.ShowDeleted(false);
        return;
    }
    const bool dataRow = rows_.IsDataRow(current_.row);
    for (const Button button : {Button::kDelete, Button::kUndelete, Button::kEdit})
        screen_.EnableButton(button, dataRow);
    if (!adding_) Enter(current_.row);
    const bool deleted = ValueOf(view_.DeletedField()).ToBoolean();
    screen_.ShowDeleted(deleted);
    if (const LoadedRow* const row = rows_.Loaded(current_.row); row && row->isDeleted() != deleted) {
        rows_.SetDeleted(current_.row, deleted);
        screen_.RowChanged(current_.row);
    }
    const LONG record = RecordOf(current_.row) + 1;
    const LONG count = view_.RecordCount();
    screen_.ShowPosition(
        (record <= count ? PositionText(record, count) : NewPositionText(record, count)).view());
    if (readOnly_) return;
    screen_.ShowButton(Button::kDelete, !deleted);
    screen_.ShowButton(Button::kUndelete, deleted && undeleteAllowed_);
}

LONG EditSession::CurrentType() noexcept {
    return current_.column < columns_.count() ? columns_[current_.column].type : 0;
}

bool EditSession::CanEdit() noexcept {
    if (readOnly_ || !rows_.IsDataRow(current_.row) || current_.column >= columns_.count()) return false;
    if (CanBeTyped(CurrentType())) return true;
    screen_.Explain(L"This kind of field cannot be edited here.");
    return false;
}

std::optional<std::wstring> EditSession::BeginEdit() noexcept {
    if (!CanEdit()) return std::nullopt;
    edited_ = current_;
    std::optional<std::wstring> text;
    Trap([&] {
        if (!adding_) Enter(current_.row);
        text = EditText(ValueOf(view_.Field(current_.column - kFixedColumns)),
                        com::AsWide(columns_[current_.column].format));
    });
    if (!text) screen_.Explain(L"This record cannot be read any more.");
    return text;
}

bool EditSession::Accept(std::wstring_view text) noexcept {
    bool stored = false;
    std::wstring note;
    Trap([&] {
        const grid::Column& column = columns_[edited_.column];
        try {
            if (!adding_) Enter(edited_.row);
            ZuDataField& field = view_.Field(edited_.column - kFixedColumns);
            TypedValue typed = ToTypedValue(text, column.type);
            Check(field.put_Value(typed.value));
            note = std::move(typed.note);
            stored = true;
            const std::wstring shown = CellText(ValueOf(field), com::AsWide(column.format));
            rows_.SetText(edited_, com::AsUtf16(shown));
        } catch (const ComError& error) {
            note = stored ? std::wstring() : Reason(error, column.type);
        }
    });
    if (stored) {
        MarkDirty(true);
        screen_.RowChanged(edited_.row);
    }
    if (!note.empty()) screen_.Explain(note);
    return stored;
}

void EditSession::MarkDirty(bool dirty) {
    dirty_ = dirty;
    screen_.EnableButton(Button::kUpdate, dirty);
}

void EditSession::Add() noexcept {
    if (readOnly_ || !ConfirmPending()) return;
    Trap([&] {
        const Row before = current_.row;
        const Row row = rows_.Append(view_.RecordCount());
        screen_.RowsChanged();
        bool begun = false;
        Trap([&] { begun = view_.AddNew(); });
        if (!begun) {
            rows_.RemoveLast();
            screen_.RowsChanged();
            position_ = kNowhere;
            current_.row = std::min(before, rows_.count() - 1);
            ShowStatus();
            return;
        }
        position_ = RecordOf(row);
        adding_ = true;
        current_ = edited_ = {row, kFixedColumns};
        MarkDirty(true);
        rows_.Load(row, {});
        screen_.ScrollTo(row);
        screen_.CurrentCellChanged();
        LoadVisible();
        ShowStatus();
    });
}

bool EditSession::Save() noexcept {
    if (!dirty_) return true;
    const bool saved = SaveRecord();
    ShowStatus();
    return saved;
}

bool EditSession::SaveRecord() {
    bool saved = false;
    std::wstring reason;
    Trap([&] {
        try {
            saved = view_.Update();
        } catch (const ComError& error) {
            reason = error.description();
        }
    });
    if (saved) {
        adding_ = false;
        MarkDirty(false);
        return true;
    }
    screen_.Tell(kNotSaved);
    if (!reason.empty()) screen_.Explain(reason);
    return false;
}

bool EditSession::ConfirmPending() noexcept {
    if (!dirty_) return true;
    Answer answer = Answer::kCancel;
    Trap([&] { answer = screen_.Ask(SaveQuestion(adding_).view()); });
    if (answer == Answer::kCancel) {
        MoveTo(edited_);
        return false;
    }
    if (answer == Answer::kNo) {
        Discard();
        return true;
    }
    if (!Save()) return false;
    Trap([&] { ReloadCurrent(); });
    return true;
}

void EditSession::Discard() noexcept {
    if (!dirty_) return;
    Trap([&] { DropChanges(); });
    ShowStatus();
}

void EditSession::DropChanges() {
    const bool added = std::exchange(adding_, false);
    MarkDirty(false);
    position_ = kNowhere;  // entering the record again makes the view let go of what was not saved
    if (added) {
        rows_.RemoveLast();
        current_.row = std::max(std::min(current_.row, rows_.count() - 1), kHeaderRows);
        screen_.RowsChanged();
        LoadVisible();
        screen_.CurrentCellChanged();
        return;
    }
    ReloadCurrent();
}

void EditSession::ReloadCurrent() {
    position_ = kNowhere;
    rows_.ClearMark(current_.row);
    LoadRow(current_.row);
    screen_.RowChanged(current_.row);
}

void EditSession::SetDeleted(bool deleted) noexcept {
    if (readOnly_ || !rows_.IsDataRow(current_.row)) return;
    if (deleted && adding_) return Discard();
    Trap([&] {
        try {
            if (!adding_) Enter(current_.row);
            const LONG before = view_.RecordCount();
            Check(view_.DeletedField().put_Value(Variant(deleted)));
            if (view_.RecordCount() < before) RemoveCurrentRow();
        } catch (const ComError& error) {
            screen_.Explain(Reason(error, kNullField));
        }
    });
    ShowStatus();
}

void EditSession::RemoveCurrentRow() {
    MarkDirty(false);
    position_ = kNowhere;
    rows_.Remove(current_.row);
    if (current_.row >= rows_.count() && rows_.count() > kHeaderRows) current_.row = rows_.count() - 1;
    edited_ = current_;
    screen_.RowsChanged();
    LoadVisible();
    screen_.CurrentCellChanged();
}

void EditSession::Find(SearchRequest& request) noexcept {
    if (request.text.empty() || !ConfirmPending()) return;
    Trap([&] {
        const Row start = std::exchange(request.fromTop, false) ? Row{-1} : current_.row - kHeaderRows;
        const LONG count = view_.RecordCount();
        if (count < 1) return;
        const auto found = grid::FindNext(start, count, request.loop, [&](Row record) {
            return Matches(static_cast<LONG>(record), request);
        });
        if (found) {
            MoveTo({*found + kHeaderRows, kFixedColumns + static_cast<int>(request.column)});
        } else {
            ReportNotFound(request.text);
        }
    });
}

bool EditSession::Matches(LONG record, const SearchRequest& request) const {
    const std::wstring text = CellText(view_.CellValue(record, request.column), {});
    const std::u16string_view value = grid::WithoutLeadingBlanks(com::AsUtf16(text));
    const std::u16string_view wanted = com::AsUtf16(request.text);
    return request.pattern ? grid::MatchesPattern(value, wanted) : grid::BeginsWith(value, wanted);
}

com::ComPtr<ZuDataView> EditSession::ChosenView() {
    if (!rows_.IsDataRow(current_.row)) return nullptr;
    view_.Move(RecordOf(current_.row));
    return view_.view();
}

}  // namespace zu::component
