#pragma once

#include <windows.h>

#include <functional>

namespace zu::component {

/// Runs a window modally to its owner: the owner is disabled while the loop runs and enabled again before it
/// ends, whatever happens; the window that had the foreground before gets it back.
class ModalLoop {
public:
    /// `owner` may be null.
    ModalLoop(HWND window, HWND owner) noexcept;
    ~ModalLoop();
    ModalLoop(const ModalLoop&) = delete;
    ModalLoop& operator=(const ModalLoop&) = delete;

    /// Handles messages until `isDone`. `isHandled` takes the messages that are keys of dialogs. A quit
    /// message ends the loop and is posted again for the host.
    void Run(const std::function<bool()>& isDone, const std::function<bool(MSG&)>& isHandled);

private:
    HWND window_;
    HWND owner_;
    HWND foreground_;
    bool disabled_ = false;
};

}  // namespace zu::component
