#include "component/ui/txEditBox.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "com/Bstr.h"
#include "com/Module.h"
#include "component/engine/Trapped.h"
#include "component/ui/Drawing.h"
#include "portable/grid/PlainText.h"

namespace zu::component {

using grid::EditorCommand;

namespace {

constexpr int kEditId = 101;
constexpr int kToolbarId = 102;
constexpr int kEnlargeButton = 1000;
/// Rows that the larger box shows, and its least width.
constexpr int kLargeRows = 7;
constexpr int kLargeWidth = 320;

struct ToolButton {
    int command;
    const wchar_t* text;
};
constexpr ToolButton kButtons[] = {
    {static_cast<int>(EditorCommand::kAccept), L"Store"},
    {static_cast<int>(EditorCommand::kCancel), L"Discard"},
    {kEnlargeButton, L"Larger"},
};

}  // namespace

void txEditBox::Open(HWND grid, const RECT& cell, std::wstring_view text, const Look& look) {
    Close();
    grid_ = grid;
    cell_ = cell;
    look_ = look;
    CreateEdit(text);
    CreateToolbar();
    Place();
    SetFocus(edit_);
    SendMessageW(edit_, EM_SETSEL, 0, -1);
}

void txEditBox::CreateEdit(std::wstring_view text) {
    const std::u16string shown = grid::WithSystemLineEnds(com::AsUtf16(text));
    DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
    // Only a box of several lines can hold line ends, whatever its height.
    if (look_.severalLines) {
        style |= ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL | WS_BORDER;
    } else {
        style |= ES_AUTOHSCROLL | (look_.rightAligned ? ES_RIGHT : ES_LEFT);
    }
    edit_ = CreateWindowExW(0, L"EDIT", std::wstring(com::AsWide(shown)).c_str(), style, 0, 0, 10, 10, grid_,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(kEditId)), com::Module::handle(),
                            nullptr);
    SetWindowLongPtrW(edit_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    original_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(edit_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    SendMessageW(edit_, WM_SETFONT, reinterpret_cast<WPARAM>(look_.font), FALSE);
    SendMessageW(edit_, EM_SETLIMITTEXT, static_cast<WPARAM>(look_.mostCharacters), 0);
    SetUnchanged();
}

void txEditBox::CreateToolbar() {
    toolbar_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                               WS_CHILD | WS_BORDER | WS_CLIPSIBLINGS | TBSTYLE_LIST | CCS_NORESIZE |
                                   CCS_NOPARENTALIGN | CCS_NODIVIDER,
                               0, 0, 10, 10, grid_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kToolbarId)),
                               com::Module::handle(), nullptr);
    SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(toolbar_, WM_SETFONT, reinterpret_cast<WPARAM>(look_.font), FALSE);
    SendMessageW(toolbar_, TB_SETBITMAPSIZE, 0, MAKELPARAM(0, 0));
    for (const ToolButton& known : kButtons) {
        if (known.command == kEnlargeButton && look_.severalLines) continue;
        TBBUTTON button{};
        button.iBitmap = I_IMAGENONE;
        button.idCommand = known.command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_SHOWTEXT;
        button.iString = reinterpret_cast<INT_PTR>(known.text);
        SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
}

void txEditBox::Place() {
    RECT client{};
    GetClientRect(grid_, &client);
    const int dpi = DpiOf(grid_);
    RECT place = cell_;
    if (look_.severalLines) {
        const LONG rowHeight = cell_.bottom - cell_.top;
        const LONG width = std::max<LONG>(cell_.right - cell_.left, Scaled(kLargeWidth, dpi));
        place.right = std::min<LONG>(place.left + width, client.right);
        place.left = std::max<LONG>(0, std::min<LONG>(place.left, place.right - width));
        place.bottom = place.top + rowHeight * kLargeRows;
        if (place.bottom > client.bottom) OffsetRect(&place, 0, client.bottom - place.bottom);
    } else {
        // The text of a box hangs at its top: the box is made as high as its text and centred in the cell.
        InflateRect(&place, -Scaled(3, dpi), 0);
        const LONG text = Fonts(dpi).height;
        place.top += std::max<LONG>(0, (place.bottom - place.top - text) / 2);
        place.bottom = place.top + text + 1;
    }
    MoveWindow(edit_, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);

    SIZE size{};
    SendMessageW(toolbar_, TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
    size.cx += 2;
    size.cy += 2;
    LONG top = std::max(place.bottom, cell_.bottom) + 1;
    if (top + size.cy > client.bottom) top = std::min(place.top, cell_.top) - size.cy - 1;
    const LONG left = std::max<LONG>(0, std::min<LONG>(place.left, client.right - size.cx));
    SetWindowPos(toolbar_, HWND_TOP, left, top, size.cx, size.cy, SWP_NOACTIVATE);
}

LONG txEditBox::Bottom() const noexcept {
    LONG bottom = 0;
    for (const HWND window : {edit_, toolbar_}) {
        RECT place{};
        if (!window || !GetWindowRect(window, &place)) continue;
        MapWindowPoints(nullptr, grid_, reinterpret_cast<POINT*>(&place), 2);
        bottom = std::max(bottom, place.bottom);
    }
    return bottom;
}

void txEditBox::MoveTo(const RECT& cell) {
    if (!isOpen()) return;
    cell_ = cell;
    Place();
}

void txEditBox::ReplaceBy(wchar_t character) {
    const wchar_t text[] = {character, L'\0'};
    SetWindowTextW(edit_, text);
    SendMessageW(edit_, EM_SETSEL, 1, 1);
    SendMessageW(edit_, EM_SETMODIFY, TRUE, 0);
}

void txEditBox::Close() noexcept {
    if (!edit_ || closing_) return;
    // Destroying the box takes the focus from it, which must not count as leaving it.
    closing_ = true;
    DestroyWindow(std::exchange(toolbar_, nullptr));
    DestroyWindow(std::exchange(edit_, nullptr));
    closing_ = false;
}

void txEditBox::Enlarge() {
    if (!isOpen() || look_.severalLines) return;
    const std::wstring text = Text();
    const bool changed = isChanged();
    const HWND grid = grid_;
    const RECT cell = cell_;
    Look look = look_;
    look.severalLines = true;
    Open(grid, cell, text, look);
    SendMessageW(edit_, EM_SETMODIFY, changed, 0);
    SelectNothing();
}

void txEditBox::SelectNothing() {
    const int end = GetWindowTextLengthW(edit_);
    SendMessageW(edit_, EM_SETSEL, static_cast<WPARAM>(end), end);
}

void txEditBox::InsertLineEnd() {
    SendMessageW(edit_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\r\n"));
}

bool txEditBox::isChanged() const {
    return SendMessageW(edit_, EM_GETMODIFY, 0, 0) != 0;
}

void txEditBox::SetUnchanged() {
    SendMessageW(edit_, EM_SETMODIFY, FALSE, 0);
}

void txEditBox::TakeFocus() noexcept {
    if (edit_) SetFocus(edit_);
}

bool txEditBox::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (!toolbar_ || reinterpret_cast<HWND>(lParam) != toolbar_) return false;
    if (LOWORD(wParam) == kEnlargeButton) {
        Enlarge();
    } else {
        owner_.PerformInEditor(static_cast<EditorCommand>(LOWORD(wParam)));
    }
    return true;
}

EditorCommand txEditBox::CommandOf(WPARAM key) const {
    return grid::EditorActionFor(
        {static_cast<unsigned>(key), GetKeyState(VK_CONTROL) < 0, GetKeyState(VK_SHIFT) < 0},
        look_.severalLines);
}

LRESULT CALLBACK txEditBox::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = reinterpret_cast<txEditBox*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const WNDPROC original = self->original_;
    LRESULT result = 0;
    bool handled = false;
    Trap([&] {
        result = self->Handle(message, wParam, lParam);
        handled = result != 0;
    });
    if (handled) return message == WM_GETDLGCODE ? result : 0;
    return CallWindowProcW(original, window, message, wParam, lParam);
}

/// Not 0 when the message is done with.
LRESULT txEditBox::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE: {
            const auto* const pending = reinterpret_cast<const MSG*>(lParam);
            const bool ours = pending && pending->message == WM_KEYDOWN &&
                              CommandOf(pending->wParam) != EditorCommand::kNone;
            return DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_HASSETSEL | (ours ? DLGC_WANTMESSAGE : 0);
        }
        case WM_KEYDOWN: {
            const EditorCommand command = CommandOf(wParam);
            if (command == EditorCommand::kNone) return 0;
            owner_.PerformInEditor(command);  // the box may be gone after it
            return 1;
        }
        case WM_CHAR:
            // Their key-down was a command already.
            return wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB || wParam == L'\n';
        case WM_SETFOCUS:
            ShowWindow(toolbar_, SW_SHOWNA);
            return 0;
        case WM_KILLFOCUS: {
            if (closing_) return 0;
            ShowWindow(toolbar_, SW_HIDE);
            const HWND next = reinterpret_cast<HWND>(wParam);
            const bool inForm = next && GetAncestor(next, GA_ROOT) == GetAncestor(grid_, GA_ROOT);
            if (inForm) owner_.EditorLeft();
            return 0;
        }
        default:
            return 0;
    }
}

}  // namespace zu::component
