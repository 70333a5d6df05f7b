#pragma once

#include <windows.h>

#include <string_view>
#include <utility>

namespace zu::component {

/// Owns a font, brush, pen or bitmap.
template <class Handle>
class DrawingObject {
public:
    DrawingObject() noexcept = default;
    explicit DrawingObject(Handle handle) noexcept : handle_(handle) {}
    DrawingObject(DrawingObject&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    DrawingObject& operator=(DrawingObject&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    DrawingObject(const DrawingObject&) = delete;
    DrawingObject& operator=(const DrawingObject&) = delete;
    ~DrawingObject() {
        if (handle_) DeleteObject(handle_);
    }
    Handle get() const noexcept { return handle_; }

private:
    Handle handle_ = nullptr;
};

using Font = DrawingObject<HFONT>;
using Bitmap = DrawingObject<HBITMAP>;

/// Pixels to an inch where the window is; also on systems that have one resolution for all screens.
int DpiOf(HWND window) noexcept;
/// A length in units of 1/96 inch as pixels.
inline int Scaled(int length, int dpi) noexcept {
    return MulDiv(length, dpi, USER_DEFAULT_SCREEN_DPI);
}

/// The system's own font for messages at a resolution, in the looks that a grid needs.
struct Fonts {
    explicit Fonts(int dpi);
    Font plain;
    Font bold;
    Font struck;
    int height = 0;  ///< of a line
    int digitWidth = 0;
};

/// The width of a text in pixels.
int WidthOf(HWND window, HFONT font, std::wstring_view text);

/// A colour between two system colours; the first one where the user has chosen high contrast.
COLORREF Blend(int colour, int other, int percentOfOther) noexcept;
bool IsHighContrast() noexcept;

}  // namespace zu::component
