#include "component/ui/frmDBfEditSearch.h"

#include <algorithm>
#include <string>

#include "com/ComError.h"
#include "com/Module.h"
#include "component/engine/Trapped.h"
#include "component/ui/Window.h"

namespace zu::component {

namespace {

constexpr std::wstring_view kTitle = L"Search";
constexpr const wchar_t* kHelpText =
    L"Find Next looks for the next record whose value in the chosen field begins with the text, whatever its "
    L"case. "
    L"Blanks in front of the value do not count.\r\n\r\n"
    L"With \"Use Pattern Matching\" the whole value must have the form of the text, upper and lower case "
    L"counting:\r\n\r\n"
    L"?\tany one character\r\n"
    L"*\tany number of characters\r\n"
    L"#\tone digit\r\n"
    L"[abc]\tone of these characters\r\n"
    L"[!abc]\tany other character\r\n\r\n"
    L"F3 searches on from the grid, too.";

/// A place in units of 1/96 inch.
struct Item {
    frmDBfEditSearch::Control id;
    const wchar_t* windowClass;
    const wchar_t* text;
    DWORD style;
    int x, y, width, height;
};

constexpr DWORD kTabStop = WS_TABSTOP;
constexpr Item kItems[] = {
    {frmDBfEditSearch::kFieldNameLabel, L"STATIC", L"Field To Search:", SS_LEFT, 12, 15, 110, 18},
    {frmDBfEditSearch::kFieldName, L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | kTabStop, 126, 11, 210,
     240},
    {frmDBfEditSearch::kSearchTextLabel, L"STATIC", L"Te&xt To Find:", SS_LEFT, 12, 46, 110, 18},
    {frmDBfEditSearch::kSearchText, L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER | kTabStop, 126, 42, 210, 23},
    {frmDBfEditSearch::kStartAtTop, L"BUTTON", L"Start from Top", BS_AUTOCHECKBOX | kTabStop, 126, 76, 220,
     20},
    {frmDBfEditSearch::kLoop, L"BUTTON", L"Search loops when last record", BS_AUTOCHECKBOX | kTabStop, 126,
     100, 220, 20},
    {frmDBfEditSearch::kPattern, L"BUTTON", L"Use Pattern Matching", BS_AUTOCHECKBOX | kTabStop, 126, 124,
     220, 20},
    {frmDBfEditSearch::kFind, L"BUTTON", L"Find &Next", BS_DEFPUSHBUTTON | kTabStop, 352, 10, 86, 26},
    {frmDBfEditSearch::kCancel, L"BUTTON", L"&Cancel", BS_PUSHBUTTON | kTabStop, 352, 42, 86, 26},
    {frmDBfEditSearch::kHelp, L"BUTTON", L"&Help", BS_PUSHBUTTON | kTabStop, 352, 74, 86, 26},
};
constexpr int kWidth = 450;
constexpr int kHeight = 156;

/// A dialog template without controls, menu, class and title.
struct EmptyTemplate {
    DLGTEMPLATE header;
    WORD nothing[3];
};

}  // namespace

frmDBfEditSearch::frmDBfEditSearch(HWND owner, SearchListener& listener) : listener_(listener) {
    alignas(DWORD) EmptyTemplate empty{};
    empty.header.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    CreateDialogIndirectParamW(com::Module::handle(), &empty.header, owner, &Procedure,
                               reinterpret_cast<LPARAM>(this));
    if (!dialog_)
        throw com::ComError(HRESULT_FROM_WIN32(GetLastError()), L"The search dialog could not be opened");
}

frmDBfEditSearch::~frmDBfEditSearch() {
    if (dialog_) DestroyWindow(dialog_);
}

void frmDBfEditSearch::CreateControls() {
    const int dpi = DpiOf(dialog_);
    fonts_ = std::make_unique<Fonts>(dpi);
    SetWindowTextW(dialog_, kTitle.data());
    for (const Item& item : kItems) {
        const HWND control = CreateWindowExW(
            item.id == kSearchText ? WS_EX_CLIENTEDGE : 0, item.windowClass, item.text,
            WS_CHILD | WS_VISIBLE | (item.style & ~(item.id == kSearchText ? WS_BORDER : 0UL)),
            Scaled(item.x, dpi), Scaled(item.y, dpi), Scaled(item.width, dpi), Scaled(item.height, dpi),
            dialog_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(item.id)), com::Module::handle(), nullptr);
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_->plain.get()), FALSE);
    }
    RECT place{0, 0, Scaled(kWidth, dpi), Scaled(kHeight, dpi)};
    AdjustWindowRectEx(&place, static_cast<DWORD>(GetWindowLongPtrW(dialog_, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(dialog_, GWL_EXSTYLE)));
    SetWindowPos(dialog_, nullptr, 0, 0, place.right - place.left, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void frmDBfEditSearch::AddField(std::wstring_view name, LONG columnNumber) {
    const std::wstring text(name);
    const LRESULT entry =
        SendDlgItemMessageW(dialog_, kFieldName, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SendDlgItemMessageW(dialog_, kFieldName, CB_SETITEMDATA, static_cast<WPARAM>(entry), columnNumber);
}

void frmDBfEditSearch::ChooseColumn(LONG columnNumber) {
    const LRESULT count = SendDlgItemMessageW(dialog_, kFieldName, CB_GETCOUNT, 0, 0);
    LRESULT found = -1;
    for (LRESULT entry = 0; entry < count && found < 0; ++entry) {
        if (SendDlgItemMessageW(dialog_, kFieldName, CB_GETITEMDATA, static_cast<WPARAM>(entry), 0) ==
            columnNumber)
            found = entry;
    }
    SendDlgItemMessageW(dialog_, kFieldName, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
}

void frmDBfEditSearch::SetFromTop(bool fromTop) {
    SendDlgItemMessageW(dialog_, kStartAtTop, BM_SETCHECK, fromTop ? BST_CHECKED : BST_UNCHECKED, 0);
}

void frmDBfEditSearch::PlaceBesideOwner() {
    RECT owner{};
    RECT own{};
    RECT work{};
    GetWindowRect(GetWindow(dialog_, GW_OWNER), &owner);
    GetWindowRect(dialog_, &own);
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const SIZE size = SizeOf(own);
    // Below the grid's window, so that what is found stays to be seen; over its lower edge where there is no
    // room.
    const LONG top = std::min(owner.bottom + 4, work.bottom - size.cy);
    const LONG left =
        std::clamp<LONG>(owner.right - size.cx, work.left, std::max(work.left, work.right - size.cx));
    SetWindowPos(dialog_, nullptr, left, std::max(top, work.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void frmDBfEditSearch::Show() {
    if (!IsWindowVisible(dialog_)) PlaceBesideOwner();
    ShowWindow(dialog_, SW_SHOW);
    SetActiveWindow(dialog_);
    SetFocus(GetDlgItem(dialog_, kSearchText));
    SendDlgItemMessageW(dialog_, kSearchText, EM_SETSEL, 0, -1);
}

void frmDBfEditSearch::Hide() {
    ShowWindow(dialog_, SW_HIDE);
}

void frmDBfEditSearch::Find() {
    const LRESULT chosen = SendDlgItemMessageW(dialog_, kFieldName, CB_GETCURSEL, 0, 0);
    if (chosen < 0) return;
    SearchRequest request;
    request.column = static_cast<LONG>(
        SendDlgItemMessageW(dialog_, kFieldName, CB_GETITEMDATA, static_cast<WPARAM>(chosen), 0));
    request.text = TextOf(GetDlgItem(dialog_, kSearchText));
    request.fromTop = IsChecked(kStartAtTop);
    request.loop = IsChecked(kLoop);
    request.pattern = IsChecked(kPattern);
    listener_.SearchRequested(request);
}

INT_PTR CALLBACK frmDBfEditSearch::Procedure(HWND dialog, UINT message, WPARAM wParam,
                                             LPARAM lParam) noexcept {
    auto* self = reinterpret_cast<frmDBfEditSearch*>(GetWindowLongPtrW(dialog, DWLP_USER));
    bool handled = false;
    if (message == WM_INITDIALOG) {
        self = reinterpret_cast<frmDBfEditSearch*>(lParam);
        self->dialog_ = dialog;
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        Trap([&] { self->CreateControls(); });
        return FALSE;
    }
    if (!self) return FALSE;
    Trap([&] { handled = self->Handle(message, wParam); });
    if (message == WM_NCDESTROY) self->dialog_ = nullptr;
    return handled;
}

bool frmDBfEditSearch::Handle(UINT message, WPARAM wParam) {
    if (message == WM_CLOSE) {
        Hide();
        return true;
    }
    if (message != WM_COMMAND) return false;
    switch (LOWORD(wParam)) {
        case kFind:
            Find();
            return true;
        case kCancel:
            Hide();
            return true;
        case kHelp:
            MessageBoxW(dialog_, kHelpText, L"Help on Searching", MB_OK | MB_ICONINFORMATION);
            return true;
        default:
            return false;
    }
}

}  // namespace zu::component
