#include "component/ui/CellNote.h"

#include <commctrl.h>

#include "com/Module.h"

namespace zu::component {

namespace {

constexpr int kWidestBalloon = 320;
constexpr int kWidestPlain = 600;

TOOLINFOW Tool(HWND window) noexcept {
    TOOLINFOW tool{};
    // Without the members of later versions the structure fits every version of the controls.
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_IDISHWND;
    tool.hwnd = window;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    return tool;
}

}  // namespace

CellNote::~CellNote() {
    if (balloon_ && IsWindow(balloon_)) DestroyWindow(balloon_);
}

void CellNote::Show(HWND window, const RECT& place, std::wstring_view text) {
    text_ = text;
    TOOLINFOW tool = Tool(window);
    tool.lpszText = text_.data();
    if (!balloon_) {
        const DWORD style = WS_POPUP | TTS_NOPREFIX | (form_ == Form::kBalloon ? TTS_BALLOON : 0);
        balloon_ =
            CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, style, CW_USEDEFAULT, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, com::Module::handle(), nullptr);
        SendMessageW(balloon_, TTM_SETMAXTIPWIDTH, 0,
                     form_ == Form::kBalloon ? kWidestBalloon : kWidestPlain);
        SendMessageW(balloon_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    } else {
        SendMessageW(balloon_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    window_ = window;
    // A balloon points with its stem.
    POINT at{place.left + (form_ == Form::kBalloon ? (place.right - place.left) / 4 : 0), place.bottom};
    ClientToScreen(window, &at);
    SendMessageW(balloon_, TTM_TRACKPOSITION, 0, MAKELPARAM(at.x, at.y));
    SendMessageW(balloon_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
    visible_ = true;
}

void CellNote::Hide() noexcept {
    if (!visible_) return;
    visible_ = false;
    TOOLINFOW tool = Tool(window_);
    SendMessageW(balloon_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace zu::component
