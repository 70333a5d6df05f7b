#include "component/ui/ModalLoop.h"

namespace zu::component {

ModalLoop::ModalLoop(HWND window, HWND owner) noexcept
    : window_(window), owner_(owner), foreground_(GetForegroundWindow()) {
    // Only who was enabled is enabled again: an owner that is modal to something else stays as it is.
    if (owner_ && IsWindowEnabled(owner_)) {
        EnableWindow(owner_, FALSE);
        disabled_ = true;
    }
}

ModalLoop::~ModalLoop() {
    // The owner comes first: hiding the window while it is disabled would send another program to the front.
    if (disabled_ && IsWindow(owner_)) EnableWindow(owner_, TRUE);
    if (IsWindow(window_)) ShowWindow(window_, SW_HIDE);
    const HWND next = owner_ && IsWindow(owner_) ? owner_ : foreground_;
    if (next && IsWindow(next) && GetWindowThreadProcessId(next, nullptr) == GetCurrentThreadId())
        SetForegroundWindow(next);
}

void ModalLoop::Run(const std::function<bool()>& isDone, const std::function<bool(MSG&)>& isHandled) {
    MSG message{};
    while (!isDone()) {
        const BOOL answer = GetMessageW(&message, nullptr, 0, 0);
        if (answer == -1) break;
        if (answer == 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (isHandled(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace zu::component
