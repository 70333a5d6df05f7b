#include "component/ui/fgGrid.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "com/Bstr.h"
#include "component/ui/Clipboard.h"
#include "component/ui/GridAccessible.h"
#include "component/ui/GridPainter.h"
#include "portable/grid/PlainText.h"

namespace zu::component {

using grid::Cell;
using grid::Command;
using grid::kFixedColumns;
using grid::kHeaderRows;
using grid::Row;

namespace {

constexpr int kEdgeReach = 4;
constexpr int kRowGap = 7;
constexpr int kHorizontalStep = 32;
/// A column dragged or fitted wider than this would hide all others.
constexpr int kWidestFit = 600;

bool IsDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

}  // namespace

fgGrid::~fgGrid() {
    if (accessible_) accessible_->Disconnect();
    Destroy();
}

void fgGrid::Open(HWND parent, int id) {
    fonts_ = std::make_unique<Fonts>(DpiOf(parent));
    Create({L"fgGrid", WS_CHILD | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | WS_CLIPCHILDREN, WS_EX_CLIENTEDGE,
            CS_DBLCLKS},
           nullptr, parent, RECT{}, id);
    Rescale();
}

void fgGrid::Rescale() {
    const int before = dpi_;
    dpi_ = DpiOf(handle());
    fonts_ = std::make_unique<Fonts>(dpi_);
    if (dpi_ != before) session_.columns().Scale(dpi_, before);
    const int row = fonts_->height + Scaled(kRowGap, dpi_);
    viewport_.SetMetrics(row, 2 * row);
    ContentChanged();
}

int fgGrid::ColumnWidth(std::wstring_view text) const {
    return WidthOf(handle(), fonts_->bold.get(), text) + 2 * GridPainter::Padding(dpi_) + 2;
}

void fgGrid::ContentChanged() {
    viewport_.SetContent(session_.rows().count(), session_.columns().totalWidth());
    UpdateScrollBars();
    InvalidateRect(handle(), nullptr, FALSE);
}

void fgGrid::UpdateScrollBars() {
    const grid::ScrollPositions positions[] = {viewport_.Horizontal(), viewport_.Vertical()};
    for (const int bar : {SB_HORZ, SB_VERT}) {
        const grid::ScrollPositions& wanted = positions[bar];
        SCROLLINFO info{sizeof info,
                        SIF_RANGE | SIF_PAGE | SIF_POS,
                        0,
                        wanted.last,
                        static_cast<UINT>(wanted.page),
                        wanted.position,
                        0};
        SCROLLINFO& shown = shown_[bar];
        if (shown.cbSize == info.cbSize && shown.nMax == info.nMax && shown.nPage == info.nPage &&
            shown.nPos == info.nPos)
            continue;
        shown = info;
        SetScrollInfo(handle(), bar, &info, TRUE);
    }
}

void fgGrid::Moved() {
    UpdateScrollBars();
    note_.Hide();
    tip_.Hide();
    session_.LoadVisible();
    InvalidateRect(handle(), nullptr, FALSE);
    owner_.GridScrolled();
}

void fgGrid::ShowCurrent() {
    const Cell current = session_.current();
    const int left = session_.columns().Left(current.column);
    const bool rowMoved = viewport_.ShowRow(current.row);
    const bool columnMoved = viewport_.ShowColumn(left, left + session_.columns()[current.column].width);
    if (rowMoved || columnMoved) {
        Moved();
    } else {
        InvalidateRect(handle(), nullptr, FALSE);
        note_.Hide();
    }
    if (accessible_)
        accessible_->AnnounceFocus();
    else if (focused_)
        NotifyWinEvent(EVENT_OBJECT_FOCUS, handle(), OBJID_CLIENT, CHILDID_SELF);
}

void fgGrid::ScrollTo(Row row) {
    viewport_.SetContent(session_.rows().count(), session_.columns().totalWidth());
    if (viewport_.ScrollToRow(row)) Moved();
}

void fgGrid::RedrawRow(Row row) {
    const int top = static_cast<int>(std::clamp<Row>(viewport_.RowTop(row), -1000, 100'000));
    const RECT place{0, top, viewport_.width(), top + viewport_.rowHeight()};
    InvalidateRect(handle(), &place, FALSE);
}

RECT fgGrid::CellPlace(Cell cell) const {
    const int left = session_.columns().Left(cell.column) - viewport_.left();
    const int top = static_cast<int>(std::clamp<Row>(viewport_.RowTop(cell.row), -100'000, 100'000));
    return {left, top, left + session_.columns()[cell.column].width, top + viewport_.rowHeight()};
}

void fgGrid::Explain(std::wstring_view note, LONG bottom) {
    RECT place = CellPlace(session_.current());
    place.bottom = std::max(place.bottom, bottom);
    note_.Show(handle(), place, note);
}

void fgGrid::Paint() {
    PAINTSTRUCT paint{};
    const HDC target = BeginPaint(handle(), &paint);
    RECT client{};
    GetClientRect(handle(), &client);
    const HDC memory = CreateCompatibleDC(target);
    const Bitmap bitmap(
        CreateCompatibleBitmap(target, std::max<int>(client.right, 1), std::max<int>(client.bottom, 1)));
    const HGDIOBJ before = SelectObject(memory, bitmap.get());
    GridPainter(session_, viewport_, *fonts_, dpi_).Paint(memory, client, focused_);
    const RECT& dirty = paint.rcPaint;
    BitBlt(target, dirty.left, dirty.top, dirty.right - dirty.left, dirty.bottom - dirty.top, memory,
           dirty.left, dirty.top, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    EndPaint(handle(), &paint);
}

void fgGrid::Scroll(bool vertical, WORD code) {
    // The message carries 16 bits of the position; the bar itself knows all of them.
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(handle(), vertical ? SB_VERT : SB_HORZ, &info);
    bool moved = false;
    if (vertical) {
        const Row top = viewport_.topRow();
        const Row page = viewport_.fullRows();
        switch (code) {
            case SB_LINEUP:
                moved = viewport_.ScrollToRow(top - 1);
                break;
            case SB_LINEDOWN:
                moved = viewport_.ScrollToRow(top + 1);
                break;
            case SB_PAGEUP:
                moved = viewport_.ScrollToRow(top - page);
                break;
            case SB_PAGEDOWN:
                moved = viewport_.ScrollToRow(top + page);
                break;
            case SB_TOP:
                moved = viewport_.ScrollToRow(kHeaderRows);
                break;
            case SB_BOTTOM:
                moved = viewport_.ScrollToRow(session_.rows().count());
                break;
            case SB_THUMBTRACK:
            case SB_THUMBPOSITION:
                moved = viewport_.ScrollToRow(viewport_.RowOfPosition(info.nTrackPos));
                break;
            default:
                break;
        }
    } else {
        const int left = viewport_.left();
        switch (code) {
            case SB_LINEUP:
                moved = viewport_.ScrollToLeft(left - Scaled(kHorizontalStep, dpi_));
                break;
            case SB_LINEDOWN:
                moved = viewport_.ScrollToLeft(left + Scaled(kHorizontalStep, dpi_));
                break;
            case SB_PAGEUP:
                moved = viewport_.ScrollToLeft(left - viewport_.width());
                break;
            case SB_PAGEDOWN:
                moved = viewport_.ScrollToLeft(left + viewport_.width());
                break;
            case SB_TOP:
                moved = viewport_.ScrollToLeft(0);
                break;
            case SB_BOTTOM:
                moved = viewport_.ScrollToLeft(session_.columns().totalWidth());
                break;
            case SB_THUMBTRACK:
            case SB_THUMBPOSITION:
                moved = viewport_.ScrollToLeft(info.nTrackPos);
                break;
            default:
                break;
        }
    }
    if (moved) Moved();
}

void fgGrid::Wheel(int delta, bool sideways) {
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const Row page = viewport_.fullRows();
    const int perNotch = static_cast<int>(lines == WHEEL_PAGESCROLL ? page : static_cast<Row>(lines));
    wheelRest_ += delta * perNotch;
    const int steps = wheelRest_ / WHEEL_DELTA;
    wheelRest_ -= steps * WHEEL_DELTA;
    if (steps == 0) return;
    const bool moved = sideways
                           ? viewport_.ScrollToLeft(viewport_.left() - steps * Scaled(kHorizontalStep, dpi_))
                           : viewport_.ScrollBy(-steps);
    if (moved) Moved();
}

bool fgGrid::KeyDown(unsigned key) {
    const grid::KeyAction action = grid::ActionFor({key, IsDown(VK_CONTROL), IsDown(VK_SHIFT)});
    if (action.command == Command::kNone) return false;
    note_.Hide();
    tip_.Hide();
    if (action.command == Command::kMove) {
        session_.MoveTo(
            grid::Moved(session_.current(), action.motion, session_.extent(), viewport_.fullRows()));
    } else {
        owner_.Perform(action.command);
    }
    return true;
}

std::optional<int> fgGrid::EdgeUnder(POINT at) const {
    if (at.y >= viewport_.headerHeight()) return std::nullopt;
    return session_.columns().EdgeAt(at.x + viewport_.left(), Scaled(kEdgeReach, dpi_));
}

std::optional<Cell> fgGrid::CellUnder(POINT at) const {
    const auto row = viewport_.RowAt(at.y);
    const auto column = session_.columns().At(at.x + viewport_.left());
    if (!row || !column) return std::nullopt;
    return Cell{*row, *column};
}

void fgGrid::MouseDown(POINT at) {
    tip_.Hide();
    if (const auto edge = EdgeUnder(at)) {
        dragged_ = edge;
        dragOffset_ = session_.columns().Left(*edge + 1) - viewport_.left() - at.x;
        SetCapture(handle());
        return;
    }
    if (!owner_.FinishEdit()) return;
    SetFocus(handle());
    if (const auto cell = CellUnder(at)) session_.MoveTo(*cell);
}

void fgGrid::MouseMove(POINT at) {
    if (dragged_)
        DragColumn(at.x);
    else
        tip_.MouseOver(handle(), CellUnder(at));
}

void fgGrid::ShowTip() {
    const std::optional<Cell> cell = tip_.cell();
    // What explains a value that was refused stands where the tip would.
    if (!cell || dragged_ || note_.isVisible() || !session_.Loaded(cell->row)) return;
    const std::wstring text = session_.TextAt(*cell);
    if (IsCutOff(*cell, text)) tip_.Show(handle(), CellPlace(*cell), text);
}

bool fgGrid::IsCutOff(Cell cell, std::wstring_view text) const {
    const std::u16string shown = grid::ShownText(com::AsUtf16(text));
    if (shown.size() < text.size()) return true;
    const int room = session_.columns()[cell.column].width - 2 * GridPainter::Padding(dpi_);
    return WidthOf(handle(), fonts_->plain.get(), com::AsWide(shown)) > room;
}

void fgGrid::DragColumn(int x) {
    const int left = session_.columns().Left(*dragged_) - viewport_.left();
    session_.columns().SetWidth(*dragged_, x + dragOffset_ - left);
    ContentChanged();
    owner_.GridScrolled();
}

void fgGrid::MouseDoubleClick(POINT at) {
    if (const auto edge = EdgeUnder(at)) {
        FitColumn(*edge);
        return;
    }
    if (!CellUnder(at)) return;
    MouseDown(at);
    owner_.CellActivated();
}

void fgGrid::FitColumn(int column) {
    const grid::Column& shown = session_.columns()[column];
    int width = std::max(ColumnWidth(com::AsWide(shown.caption)), ColumnWidth(com::AsWide(shown.format)));
    // The rows on the screen only: all of them might be millions.
    for (Row row = viewport_.topRow(); row < viewport_.visibleEnd(); ++row) {
        const std::wstring text = session_.TextAt({row, column});
        const std::u16string cut = grid::ShownText(com::AsUtf16(text));
        width = std::max(width, WidthOf(handle(), fonts_->plain.get(), com::AsWide(cut)) +
                                    2 * GridPainter::Padding(dpi_) + 2);
    }
    session_.columns().SetWidth(column, std::min(width, Scaled(kWidestFit, dpi_)));
    ContentChanged();
    owner_.GridScrolled();
}

void fgGrid::ContextMenu(POINT at) {
    if (at.x == -1 && at.y == -1) {
        const RECT place = CellPlace(session_.current());
        at = {place.left, place.bottom};
        ClientToScreen(handle(), &at);
    } else {
        POINT inside = at;
        ScreenToClient(handle(), &inside);
        if (!owner_.FinishEdit()) return;
        if (const auto cell = CellUnder(inside)) session_.MoveTo(*cell);
    }
    struct Entry {
        Command command;
        const wchar_t* text;
    };
    static constexpr Entry kEntries[] = {
        {Command::kEdit, L"&Edit\tF2"},
        {Command::kClear, L"C&lear\tDel"},
        {Command::kNone, nullptr},
        {Command::kCopyCell, L"&Copy\tCtrl+C"},
        {Command::kCopyRow, L"Copy &Row"},
        {Command::kCopyRowWithHeadings, L"Copy Row with &Headings\tCtrl+Shift+C"},
        {Command::kPaste, L"&Paste\tCtrl+V"},
        {Command::kNone, nullptr},
        {Command::kAdd, L"&Add Record\tIns"},
        {Command::kToggleDeleted, L"&Delete or Undelete Record\tCtrl+T"},
        {Command::kNone, nullptr},
        {Command::kSearch, L"&Find...\tCtrl+F"},
        {Command::kFindNext, L"Find &Next\tF3"},
    };
    const HMENU menu = CreatePopupMenu();
    for (const Entry& entry : kEntries) {
        const bool separator = !entry.text;
        const UINT state = separator                          ? MF_SEPARATOR
                           : owner_.CanPerform(entry.command) ? MF_STRING
                                                              : MF_STRING | MF_GRAYED;
        AppendMenuW(menu, state, static_cast<UINT_PTR>(entry.command), entry.text);
    }
    const BOOL chosen =
        TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, handle(), nullptr);
    DestroyMenu(menu);
    if (chosen) owner_.Perform(static_cast<Command>(chosen));
}

void fgGrid::CopyCells(bool wholeRow, bool headings) {
    if (!session_.rows().IsDataRow(session_.current().row)) return;
    if (!wholeRow) {
        CopyText(handle(), session_.TextAt(session_.current()));
        return;
    }
    std::vector<std::u16string_view> captions;
    std::vector<std::u16string_view> texts;
    const grid::LoadedRow* const row = session_.Loaded(session_.current().row);
    for (int column = kFixedColumns; column < session_.columns().count(); ++column) {
        captions.emplace_back(session_.columns()[column].caption);
        texts.push_back(row ? row->Text(static_cast<std::size_t>(column - kFixedColumns))
                            : std::u16string_view());
    }
    std::u16string text;
    if (headings) text = grid::ClipboardLine(captions) + u"\r\n";
    text += grid::ClipboardLine(texts) + u"\r\n";
    CopyText(handle(), com::AsWide(text));
}

void fgGrid::FocusChanged() {
    focused_ = GetFocus() == handle();
    InvalidateRect(handle(), nullptr, FALSE);
    if (focused_ && accessible_) accessible_->AnnounceFocus();
}

UINT fgGrid::StateMessage() noexcept {
    static const UINT message = RegisterWindowMessageW(L"fgGrid.State");
    return message;
}

LRESULT fgGrid::Answer(WPARAM what, LPARAM which) const {
    const int column = static_cast<int>(which);
    switch (what) {
        case kCurrentRow:
            return static_cast<LRESULT>(session_.current().row);
        case kCurrentColumn:
            return session_.current().column;
        case kRowCount:
            return static_cast<LRESULT>(session_.rows().count());
        case kColumnCount:
            return session_.columns().count();
        case kTopRow:
            return static_cast<LRESULT>(viewport_.topRow());
        case kVisibleEnd:
            return static_cast<LRESULT>(viewport_.visibleEnd());
        case kLoadedRows:
            return static_cast<LRESULT>(session_.rows().loadedCount());
        case kIsEditing:
            return GetWindow(handle(), GW_CHILD) && IsWindowVisible(GetWindow(handle(), GW_CHILD));
        case kIsDirty:
            return session_.isDirty();
        case kColumnWidth:
            return column >= 0 && column < session_.columns().count() ? session_.columns()[column].width : -1;
        case kColumnLeft:
            return session_.columns().Left(column) - viewport_.left();
        case kHeaderHeight:
            return viewport_.headerHeight();
        case kRowHeight:
            return viewport_.rowHeight();
        case kNoteShown:
            return note_.isVisible();
        case kTipShown:
            return tip_.isVisible();
        default:
            return -1;
    }
}

LRESULT fgGrid::GiveText(WPARAM size, LPARAM buffer) const {
    const std::wstring text = session_.TextAt(session_.current());
    if (size == 0 || !buffer) return 0;
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    auto* const target = reinterpret_cast<wchar_t*>(buffer);
    std::copy_n(text.begin(), count, target);
    target[count] = L'\0';
    return static_cast<LRESULT>(count);
}

LRESULT fgGrid::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == StateMessage()) return Answer(wParam, lParam);
    const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND: {
            // The editor's toolbar borrows this as its own background; the grid itself is painted as a whole.
            const HDC context = reinterpret_cast<HDC>(wParam);
            RECT place{};
            GetClipBox(context, &place);
            FillRect(context, &place, GetSysColorBrush(COLOR_BTNFACE));
            return 1;
        }
        case WM_SIZE:
            viewport_.SetSize(LOWORD(lParam), HIWORD(lParam));
            Moved();
            return 0;
        case WM_VSCROLL:
        case WM_HSCROLL:
            Scroll(message == WM_VSCROLL, LOWORD(wParam));
            return 0;
        case WM_MOUSEWHEEL:
            Wheel(GET_WHEEL_DELTA_WPARAM(wParam), (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0);
            return 0;
        case WM_MOUSEHWHEEL:
            Wheel(-GET_WHEEL_DELTA_WPARAM(wParam), true);
            return 0;
        case WM_GETDLGCODE: {
            const auto* const pending = reinterpret_cast<const MSG*>(lParam);
            const bool ours = pending && pending->message == WM_KEYDOWN &&
                              (pending->wParam == VK_RETURN || pending->wParam == VK_ESCAPE);
            return DLGC_WANTARROWS | DLGC_WANTCHARS | (ours ? DLGC_WANTMESSAGE : 0);
        }
        case WM_KEYDOWN:
            if (KeyDown(static_cast<unsigned>(wParam))) return 0;
            break;
        case WM_CHAR:
            if (wParam > L' ' && wParam != 0x7F && !IsDown(VK_CONTROL))
                owner_.TypeInto(static_cast<wchar_t>(wParam));
            return 0;
        case WM_LBUTTONDOWN:
            MouseDown(at);
            return 0;
        case WM_MOUSEMOVE:
            MouseMove(at);
            return 0;
        case WM_MOUSEHOVER:
            ShowTip();
            return 0;
        case WM_MOUSELEAVE:
            tip_.MouseOver(handle(), std::nullopt);
            return 0;
        case WM_LBUTTONUP:
            if (dragged_) {
                DragColumn(at.x);  // the last moves may not have been told
                ReleaseCapture();
            }
            return 0;
        case WM_CAPTURECHANGED:
            dragged_.reset();
            return 0;
        case WM_LBUTTONDBLCLK:
            MouseDoubleClick(at);
            return 0;
        case WM_CONTEXTMENU:
            ContextMenu(at);
            return 0;
        case WM_SETCURSOR: {
            POINT mouse{};
            GetCursorPos(&mouse);
            ScreenToClient(handle(), &mouse);
            if (LOWORD(lParam) == HTCLIENT && EdgeUnder(mouse)) {
                SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
                return TRUE;
            }
            break;
        }
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            FocusChanged();
            return 0;
        case WM_COMMAND:
        case WM_NOTIFY:
        case WM_CTLCOLOREDIT:
            break;
        case WM_GETTEXT:
            return GiveText(wParam, lParam);
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(session_.TextAt(session_.current()).size());
        case WM_GETOBJECT:
            if (static_cast<LONG>(lParam) == OBJID_CLIENT) {
                if (!accessible_) accessible_ = GridAccessible::Make(*this);
                return accessible_->Answer(wParam);
            }
            break;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

}  // namespace zu::component
