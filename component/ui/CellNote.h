#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace zu::component {

/// A small window that tells something beside a cell: a balloon that explains, until the user goes on, or a
/// plain one.
class CellNote {
public:
    enum class Form { kBalloon, kPlain };

    explicit CellNote(Form form) noexcept : form_(form) {}
    CellNote(const CellNote&) = delete;
    CellNote& operator=(const CellNote&) = delete;
    ~CellNote();

    /// `place` is the cell in the coordinates of `window`.
    void Show(HWND window, const RECT& place, std::wstring_view text);
    void Hide() noexcept;
    bool isVisible() const noexcept { return visible_; }
    const std::wstring& text() const noexcept { return text_; }

private:
    Form form_;
    HWND balloon_ = nullptr;
    HWND window_ = nullptr;
    std::wstring text_;
    bool visible_ = false;
};

}  // namespace zu::component
