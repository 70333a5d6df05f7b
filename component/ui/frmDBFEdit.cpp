#include "component/ui/frmDBFEdit.h"

#include <algorithm>

#include "com/Bstr.h"
#include "component/engine/EngineLink.h"
#include "component/engine/Trapped.h"
#include "component/ui/ModalLoop.h"

namespace zu::component {

using com::ComPtr;
using grid::Row;

namespace {

constexpr int kGridId = 100;
constexpr int kPictureId = 90;
constexpr int kFrameId = 91;
/// The grid's design-time place in the form, in units of 1/96 inch.
constexpr int kGridLeft = 8;
constexpr int kGridTop = 8;
constexpr const wchar_t* kQuestionTitle = L"Velmora.Fluxary";
constexpr std::wstring_view kNotUpdateable = L" (Not Updateable)";

HWND OwnerWindow() noexcept {
    HWND owner = nullptr;
    Trap([&] { owner = Engine().OwnerWindow(); });
    return owner && IsWindow(owner) ? GetAncestor(owner, GA_ROOT) : nullptr;
}

}  // namespace

frmDBFEdit::~frmDBFEdit() {
    search_.reset();
    editor_.Close();
    grid_.reset();
    Destroy();
}

std::wstring frmDBFEdit::DisplayEdit(std::wstring_view title, const ComPtr<ZuDataView>& view,
                                     bool editAllowed, bool allowUndelete, const FormPlace& place,
                                     const VARIANT& direction) {
    session_ = std::make_unique<EditSession>(view, *this);
    CreateWindows(title);
    session_->OpenForEditing(editAllowed && allowUndelete, direction);
    if (!session_->isUpdateable())
        SetWindowTextW(handle(), (std::wstring(title) + std::wstring(kNotUpdateable)).c_str());
    PlaceWindow(place);
    LoadAndShow();
    return closeReason_;
}

ComPtr<ZuDataView> frmDBFEdit::DisplayPick(std::wstring_view title, const ComPtr<ZuDataView>& view,
                                           const FormPlace& place) {
    picking_ = true;
    session_ = std::make_unique<EditSession>(view, *this);
    CreateWindows(title);
    session_->OpenForPicking();
    PlaceWindow(place);
    LoadAndShow();
    return selected_ ? session_->ChosenView() : nullptr;
}

void frmDBFEdit::CreateWindows(std::wstring_view caption) {
    owner_ = OwnerWindow();
    const std::wstring title(caption);
    Create({L"frmDBFEdit", WS_POPUP | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, 0,
            COLOR_BTNFACE},
           title.c_str(), owner_, RECT{0, 0, 600, 400});
    // The engine shows its messages over the form while this is set.
    SetPropW(handle(), L"Zuengine.ShowsMessages", handle());
    grid_ = std::make_unique<fgGrid>(*session_, *this);
    grid_->Open(handle(), kGridId);
    picture_.Open(L"Picture1", handle(), kPictureId);
    frame_.Open(L"bnFrame", picture_.handle(), kFrameId);
    buttons_ = std::make_unique<FormButtons>(picture_.handle(), frame_.handle());
    buttons_->Show(Button::kSearch, true);
}

void frmDBFEdit::PlaceWindow(const FormPlace& place) {
    const LONG left = place.left >= 0 ? place.left : (GetSystemMetrics(SM_CXSCREEN) - place.width) / 2;
    const LONG top = place.top >= 0 ? place.top : (GetSystemMetrics(SM_CYSCREEN) - place.height) / 2;
    MoveWindow(handle(), left, top, place.width, place.height, FALSE);
}

void frmDBFEdit::LayOut() {
    if (!buttons_) return;
    RECT client{};
    GetClientRect(handle(), &client);
    const int dpi = DpiOf(handle());
    const int pictureHeight = buttons_->HeightFor(client.right);
    MoveWindow(picture_.handle(), 0, client.bottom - pictureHeight, client.right, pictureHeight, TRUE);
    buttons_->LayOut(client.right, picking_);
    const int left = Scaled(kGridLeft, dpi);
    const int top = Scaled(kGridTop, dpi);
    MoveWindow(grid_->handle(), left, top, std::max<int>(client.right - 2 * left, 0),
               std::max<int>(client.bottom - top - pictureHeight, 0), TRUE);
}

void frmDBFEdit::LoadAndShow() {
    LayOut();
    session_->Load([this](std::wstring_view text) { return grid_->ColumnWidth(text); });
    grid_->ContentChanged();
    session_->Start();
    ShowWindow(grid_->handle(), SW_SHOW);
    RunModal();
    if (search_) search_->SetVisible(false);
}

void frmDBFEdit::RunModal() {
    ModalLoop loop(handle(), owner_);
    ShowWindow(handle(), SW_SHOW);
    SetForegroundWindow(handle());
    SetFocus(grid_->handle());
    loop.Run([this] { return closed_; }, [this](MSG& message) { return IsForMe(message); });
}

bool frmDBFEdit::IsForMe(MSG& message) {
    const HWND dialog = search_ ? search_->dialog() : nullptr;
    const bool inDialog = dialog && (message.hwnd == dialog || IsChild(dialog, message.hwnd));
    if (inDialog) {
        if (message.message == WM_KEYDOWN && message.wParam == VK_F3) {
            SendMessageW(dialog, WM_COMMAND, frmDBfEditSearch::kFind, 0);
            return true;
        }
        return IsDialogMessageW(dialog, &message) != FALSE;
    }
    return handle() && IsDialogMessageW(handle(), &message) != FALSE;
}

void frmDBFEdit::Close() {
    // An answer is enough: the modal loop ends, and the caller takes the window away.
    if (search_) search_->SetVisible(false);
    closed_ = true;
    PostMessageW(handle(), WM_NULL, 0, 0);
}

void frmDBFEdit::CloseFromBox() {
    closeReason_ = L"SYSCLOSE";
    editor_.Close();
    Close();
}

void frmDBFEdit::OnDestroyed() {
    // The window went with its owner: as if it had been closed, nothing is saved.
    if (!closed_) closeReason_ = L"SYSCLOSE";
    closed_ = true;
}

void frmDBFEdit::OnButton(Button button) {
    if (!buttons_->isShown(button) || !buttons_->isEnabled(button)) return;
    if (button == Button::kCancel) {
        Close();
        return;
    }
    if (!FinishEdit()) return;
    switch (button) {
        case Button::kAdd:
            session_->Add();
            break;
        case Button::kEdit:
            BeginEdit();
            return;
        case Button::kDelete:
            session_->SetDeleted(true);
            break;
        case Button::kUndelete:
            session_->SetDeleted(false);
            break;
        case Button::kUpdate:
            session_->Save();
            break;
        case Button::kSearch:
            OpenSearch();
            return;
        case Button::kExit:
            if (session_->ConfirmPending()) Close();
            break;
        case Button::kSelect:
            selected_ = true;
            Close();
            break;
        case Button::kCancel:
            break;
    }
    // After an action on the record the user goes on in the grid; a button that has just vanished could not
    // keep the focus anyway.
    if (!closed_) SetFocus(grid_->handle());
}

LRESULT frmDBFEdit::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            LayOut();
            GridScrolled();
            return 0;
        case WM_CLOSE:
            CloseFromBox();
            return 0;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDCANCEL && HIWORD(wParam) == 0) {
                Escape();
            } else if (const auto button = FormButtons::Of(LOWORD(wParam));
                       button && HIWORD(wParam) == BN_CLICKED) {
                OnButton(*button);
            }
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) {
                lastFocus_ = GetFocus();
                if (grid_) grid_->HideNote();
            }
            break;
        case WM_SETFOCUS:
            if (editor_.isOpen()) {
                editor_.TakeFocus();
            } else {
                const bool known = lastFocus_ && IsChild(handle(), lastFocus_) &&
                                   IsWindowVisible(lastFocus_) && IsWindowEnabled(lastFocus_);
                SetFocus(known ? lastFocus_ : grid_->handle());
            }
            return 0;
        case WM_DPICHANGED: {
            const auto* const place = reinterpret_cast<const RECT*>(lParam);
            MoveWindow(handle(), place->left, place->top, place->right - place->left,
                       place->bottom - place->top, TRUE);
            [[fallthrough]];
        }
        case WM_SETTINGCHANGE:
        case WM_THEMECHANGED:
        case WM_SYSCOLORCHANGE:
            if (grid_ && buttons_) {
                grid_->Rescale();
                buttons_->Rescale();
                LayOut();
                RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
            }
            break;
        case WM_DESTROY:
            RemovePropW(handle(), L"Zuengine.ShowsMessages");
            OnDestroyed();
            return 0;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

void frmDBFEdit::ShowButton(Button button, bool visible) {
    buttons_->Show(button, visible);
}

void frmDBFEdit::EnableButton(Button button, bool enabled) {
    buttons_->Enable(button, enabled);
}

void frmDBFEdit::ShowDeleted(bool deleted) {
    buttons_->ShowDeleted(deleted);
}

void frmDBFEdit::ShowPosition(std::wstring_view text) {
    buttons_->ShowPosition(text);
}

void frmDBFEdit::Tell(std::wstring_view message) {
    // A message box without a title would show "Error".
    MessageBoxW(handle(), std::wstring(message).c_str(), L"", MB_OK);
}

Answer frmDBFEdit::Ask(std::wstring_view question) {
    switch (MessageBoxW(handle(), std::wstring(question).c_str(), kQuestionTitle,
                        MB_YESNOCANCEL | MB_ICONQUESTION)) {
        case IDYES:
            return Answer::kYes;
        case IDNO:
            return Answer::kNo;
        default:
            return Answer::kCancel;
    }
}

void frmDBFEdit::Explain(std::wstring_view note) {
    grid_->Explain(note, editor_.isOpen() ? editor_.Bottom() : 0);
}

Row frmDBFEdit::TopRow() const {
    return grid_->viewport().topRow();
}

Row frmDBFEdit::VisibleEnd() const {
    return grid_->viewport().visibleEnd();
}

void frmDBFEdit::ScrollTo(Row row) {
    grid_->ScrollTo(row);
}

void frmDBFEdit::CurrentCellChanged() {
    grid_->ShowCurrent();
}

void frmDBFEdit::RowsChanged() {
    grid_->ContentChanged();
}

void frmDBFEdit::RowChanged(Row row) {
    grid_->RedrawRow(row);
}

}  // namespace zu::component
