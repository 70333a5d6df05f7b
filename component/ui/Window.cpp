#include "component/ui/Window.h"

#include "com/ComError.h"
#include "com/Module.h"
#include "component/engine/Trapped.h"

namespace zu::component {

namespace {

void Register(const wchar_t* name, UINT style, int background, WNDPROC procedure) {
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    if (GetClassInfoExW(com::Module::handle(), name, &known)) return;
    WNDCLASSEXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.style = style;
    wanted.lpfnWndProc = procedure;
    wanted.hInstance = com::Module::handle();
    wanted.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wanted.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    // System colours serve as brushes with one added to their number.
    wanted.hbrBackground =
        background < 0 ? nullptr : reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(background) + 1);
    wanted.lpszClassName = name;
    RegisterClassExW(&wanted);
}

}  // namespace

Window::~Window() {
    Destroy();
}

void Window::Create(const Style& style, const wchar_t* title, HWND parent, const RECT& place, int id) {
    Register(style.className, style.classStyle, style.background, &Procedure);
    const SIZE size = SizeOf(place);
    CreateWindowExW(style.extendedStyle, style.className, title, style.style, place.left, place.top, size.cx,
                    size.cy, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), com::Module::handle(),
                    this);
    if (window_) return;
    const DWORD error = GetLastError();
    throw com::ComError(
        error ? HRESULT_FROM_WIN32(error) : E_ACCESSDENIED,
        L"The window could not be opened: this program has no screen to show it on, or the system "
        L"refuses it (error " +
            std::to_wstring(error) + L")");
}

void Window::Destroy() noexcept {
    if (window_) DestroyWindow(window_);
}

LRESULT Window::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    return Default(message, wParam, lParam);
}

LRESULT Window::Default(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT CALLBACK Window::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* const self =
            static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* const self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    LRESULT result = 0;
    Trap([&] { result = self->Handle(message, wParam, lParam); });
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->window_ = nullptr;
    }
    return result;
}

std::wstring TextOf(HWND window) {
    const int length = GetWindowTextLengthW(window);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), length + 1)));
    return text;
}

}  // namespace zu::component
