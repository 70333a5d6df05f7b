#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

#include "component/ui/Drawing.h"
#include "component/ui/GridScreen.h"

namespace zu::component {

/// The buttons and labels under the grid: their captions, which of them are shown, and where they stand.
class FormButtons {
public:
    /// Makes the controls inside the picture box and its frame.
    FormButtons(HWND picture, HWND frame);

    void Show(Button button, bool visible);
    void Enable(Button button, bool enabled);
    bool isShown(Button button) const;
    bool isEnabled(Button button) const;
    void ShowDeleted(bool deleted);
    void ShowPosition(std::wstring_view text);

    /// The button behind a control identifier.
    static std::optional<Button> Of(int id) noexcept;
    HWND Find(Button button) const noexcept;

    /// The height of the picture box for a width.
    int HeightFor(int width);
    /// Places everything in the picture box. In pick mode the frame ends before "&Update".
    void LayOut(int width, bool picking);
    /// Takes the fonts of another resolution.
    void Rescale();

private:
    struct Metrics {
        int margin, gap, buttonWidth, buttonHeight, labelHeight;
    };
    Metrics Measure() const;
    void SetFonts();
    int WidthOf(Button button) const;

    HWND picture_;
    HWND frame_;
    HWND position_ = nullptr;
    HWND deleted_ = nullptr;
    std::optional<Fonts> fonts_;
    int dpi_ = USER_DEFAULT_SCREEN_DPI;
};

}  // namespace zu::component
