#include "component/ui/FormButtons.h"

#include <algorithm>
#include <string>

#include "com/Module.h"
#include "component/ui/Window.h"

namespace zu::component {

namespace {

constexpr int kFirstId = 301;
constexpr int kPositionId = 351;
constexpr int kDeletedId = 352;

/// In the order of the keyboard and of the screen.
struct Known {
    Button button;
    const wchar_t* caption;
    bool inFrame;
};
constexpr Known kButtons[] = {
    {Button::kSearch, L"Sea&rch", true},     {Button::kUpdate, L"&Update", true},
    {Button::kAdd, L"&Add", true},           {Button::kEdit, L"&Edit", true},
    {Button::kUndelete, L"&Undelete", true}, {Button::kDelete, L"&Delete", true},
    {Button::kExit, L"E&xit", true},         {Button::kSelect, L"&Select", false},
    {Button::kCancel, L"&Cancel", false},
};

int IdOf(Button button) noexcept {
    return kFirstId + static_cast<int>(button);
}

HWND MakeControl(const wchar_t* windowClass, const wchar_t* text, DWORD style, HWND parent, int id) {
    return CreateWindowExW(0, windowClass, text, WS_CHILD | style, 0, 0, 10, 10, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), com::Module::handle(), nullptr);
}

void Move(HWND window, int left, int top, int width, int height) {
    MoveWindow(window, left, top, std::max(width, 0), height, TRUE);
}

}  // namespace

FormButtons::FormButtons(HWND picture, HWND frame) : picture_(picture), frame_(frame) {
    for (const Known& known : kButtons)
        MakeControl(L"BUTTON", known.caption, BS_PUSHBUTTON | WS_TABSTOP, known.inFrame ? frame_ : picture_,
                    IdOf(known.button));
    position_ = MakeControl(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE | WS_VISIBLE, picture_,
                            kPositionId);
    deleted_ = MakeControl(L"STATIC", L"Deleted", SS_LEFT | SS_CENTERIMAGE, picture_, kDeletedId);
    Rescale();
}

std::optional<Button> FormButtons::Of(int id) noexcept {
    for (const Known& known : kButtons)
        if (IdOf(known.button) == id) return known.button;
    return std::nullopt;
}

HWND FormButtons::Find(Button button) const noexcept {
    const HWND inFrame = GetDlgItem(frame_, IdOf(button));
    return inFrame ? inFrame : GetDlgItem(picture_, IdOf(button));
}

bool FormButtons::isShown(Button button) const {
    return (GetWindowLongPtrW(Find(button), GWL_STYLE) & WS_VISIBLE) != 0;
}

bool FormButtons::isEnabled(Button button) const {
    return IsWindowEnabled(Find(button)) != FALSE;
}

void FormButtons::Show(Button button, bool visible) {
    if (isShown(button) != visible) ShowWindow(Find(button), visible ? SW_SHOWNA : SW_HIDE);
}

void FormButtons::Enable(Button button, bool enabled) {
    if (isEnabled(button) != enabled) EnableWindow(Find(button), enabled);
}

void FormButtons::ShowDeleted(bool deleted) {
    ShowWindow(deleted_, deleted ? SW_SHOWNA : SW_HIDE);
}

void FormButtons::ShowPosition(std::wstring_view text) {
    if (TextOf(position_) == text) return;
    SetWindowTextW(position_, std::wstring(text).c_str());
}

void FormButtons::Rescale() {
    dpi_ = DpiOf(picture_);
    fonts_.emplace(dpi_);
    for (const Known& known : kButtons)
        SendMessageW(Find(known.button), WM_SETFONT, reinterpret_cast<WPARAM>(fonts_->plain.get()), TRUE);
    SendMessageW(position_, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_->plain.get()), TRUE);
    SendMessageW(deleted_, WM_SETFONT, reinterpret_cast<WPARAM>(fonts_->bold.get()), TRUE);
}

FormButtons::Metrics FormButtons::Measure() const {
    Metrics metrics{Scaled(10, dpi_), Scaled(6, dpi_), Scaled(75, dpi_), fonts_->height + Scaled(12, dpi_),
                    fonts_->height + Scaled(6, dpi_)};
    for (const Known& known : kButtons)
        metrics.buttonWidth =
            std::max(metrics.buttonWidth,
                     component::WidthOf(picture_, fonts_->plain.get(), known.caption) + Scaled(20, dpi_));
    return metrics;
}

int FormButtons::HeightFor(int) {
    const Metrics metrics = Measure();
    return metrics.gap / 2 + metrics.labelHeight + metrics.gap / 2 + metrics.buttonHeight + metrics.margin;
}

void FormButtons::LayOut(int width, bool picking) {
    const Metrics metrics = Measure();
    const int labelTop = metrics.gap / 2;
    const int top = labelTop + metrics.labelHeight + metrics.gap / 2;
    const int deletedWidth = component::WidthOf(picture_, fonts_->bold.get(), L"Deleted") + metrics.gap;
    Move(deleted_, width - metrics.margin - deletedWidth, labelTop, deletedWidth, metrics.labelHeight);
    Move(position_, metrics.margin, labelTop, width - 2 * metrics.margin - deletedWidth, metrics.labelHeight);

    // Six places in the frame: "&Delete" and "&Undelete" share one. Where the window is narrow they shrink.
    constexpr int kPlaces = 6;
    const int room = width - 2 * metrics.margin;
    const int buttonWidth =
        std::clamp((room - (kPlaces - 1) * metrics.gap) / kPlaces, Scaled(30, dpi_), metrics.buttonWidth);
    const int step = buttonWidth + metrics.gap;
    const auto place = [&](Button button, int left) {
        Move(Find(button), left, 0, buttonWidth, metrics.buttonHeight);
    };
    place(Button::kSearch, 0);
    place(Button::kUpdate, step);
    place(Button::kAdd, 2 * step);
    place(Button::kEdit, 3 * step);
    place(Button::kDelete, 4 * step);
    place(Button::kUndelete, 4 * step);
    place(Button::kExit, std::max(5 * step, room - buttonWidth));
    Move(frame_, metrics.margin, top, picking ? step : room, metrics.buttonHeight);

    const int right = width - metrics.margin;
    Move(Find(Button::kCancel), right - metrics.buttonWidth, top, metrics.buttonWidth, metrics.buttonHeight);
    Move(Find(Button::kSelect), right - 2 * metrics.buttonWidth - metrics.gap, top, metrics.buttonWidth,
         metrics.buttonHeight);
}

}  // namespace zu::component
