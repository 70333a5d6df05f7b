#pragma once

#include <windows.h>

#include <string>

namespace zu::component {

/// A window of this module whose messages a C++ object handles. The window is destroyed with the object; an
/// object whose window went first stays behind as an empty shell.
class Window {
public:
    Window() noexcept = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    HWND handle() const noexcept { return window_; }

protected:
    struct Style {
        const wchar_t* className;
        DWORD style = 0;
        DWORD extendedStyle = 0;
        UINT classStyle = 0;
        int background = -1;  ///< a system colour; -1 for a window that paints all of itself
    };
    /// Throws ComError when the system refuses.
    void Create(const Style& style, const wchar_t* title, HWND parent, const RECT& place, int id = 0);
    void Destroy() noexcept;

    /// Answers a message; exceptions end the handling of the message and go no further.
    virtual LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) noexcept;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    HWND window_ = nullptr;
};

std::wstring TextOf(HWND window);
inline SIZE SizeOf(const RECT& place) noexcept {
    return {place.right - place.left, place.bottom - place.top};
}

}  // namespace zu::component
