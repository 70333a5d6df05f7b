#include "host/engine/FormMessage.h"

#include <windows.h>

#include <string>

namespace zu::host {

bool ShowOverForm(std::wstring_view text) {
    const HWND active = GetActiveWindow();
    for (HWND window = active; window; window = GetWindow(window, GW_OWNER)) {
        if (!GetPropW(window, kShowsMessages)) continue;
        // The caption names nobody: the window below says where the message comes from.
        MessageBoxW(active, std::wstring(text).c_str(), L"", MB_OK | MB_ICONINFORMATION);
        return true;
    }
    return false;
}

}  // namespace zu::host
