#include "component/ui/Panel.h"

namespace zu::component {

void Panel::Open(const wchar_t* className, HWND parent, int id) {
    // Without the extended style the keyboard would not find the controls inside.
    Create({className, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, 0, COLOR_BTNFACE},
           nullptr, parent, RECT{}, id);
}

LRESULT Panel::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
        case WM_CTLCOLORSTATIC:
            return SendMessageW(GetParent(handle()), message, wParam, lParam);
        default:
            return Default(message, wParam, lParam);
    }
}

}  // namespace zu::component
