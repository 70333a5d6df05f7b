#include "component/ui/Drawing.h"

#include <algorithm>

namespace zu::component {

namespace {

LOGFONTW MessageFont(int dpi) noexcept {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    const HDC screen = GetDC(nullptr);
    const int systemDpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    if (systemDpi > 0) font.lfHeight = MulDiv(font.lfHeight, dpi, systemDpi);
    return font;
}

/// A device context of a window (null: the screen) with a font selected.
class MeasuringContext {
public:
    MeasuringContext(HWND window, HFONT font) noexcept
        : window_(window), context_(GetDC(window)), before_(SelectObject(context_, font)) {}
    MeasuringContext(const MeasuringContext&) = delete;
    MeasuringContext& operator=(const MeasuringContext&) = delete;
    ~MeasuringContext() {
        SelectObject(context_, before_);
        ReleaseDC(window_, context_);
    }
    HDC get() const noexcept { return context_; }

private:
    HWND window_;
    HDC context_;
    HGDIOBJ before_;
};

}  // namespace

int DpiOf(HWND window) noexcept {
    // Windows 7 and 8 do not have the function.
    using Function = UINT(WINAPI*)(HWND);
    static const auto function = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32"), "GetDpiForWindow")));
    if (function && window) {
        if (const UINT dpi = function(window)) return static_cast<int>(dpi);
    }
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return std::max(dpi, 1);
}

Fonts::Fonts(int dpi) {
    LOGFONTW font = MessageFont(dpi);
    plain = Font(CreateFontIndirectW(&font));
    font.lfStrikeOut = TRUE;
    struck = Font(CreateFontIndirectW(&font));
    font.lfStrikeOut = FALSE;
    font.lfWeight = FW_BOLD;
    bold = Font(CreateFontIndirectW(&font));
    const MeasuringContext context(nullptr, plain.get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(context.get(), &metrics);
    height = std::max<int>(metrics.tmHeight, 1);
    SIZE digit{};
    GetTextExtentPoint32W(context.get(), L"0", 1, &digit);
    digitWidth = std::max<int>(digit.cx, 1);
}

int WidthOf(HWND window, HFONT font, std::wstring_view text) {
    const MeasuringContext context(window, font);
    SIZE size{};
    GetTextExtentPoint32W(context.get(), text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

bool IsHighContrast() noexcept {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

COLORREF Blend(int colour, int other, int percentOfOther) noexcept {
    const COLORREF first = GetSysColor(colour);
    if (IsHighContrast()) return first;
    const COLORREF second = GetSysColor(other);
    const auto mixed = [percentOfOther](int a, int b) {
        return static_cast<BYTE>((a * (100 - percentOfOther) + b * percentOfOther) / 100);
    };
    return RGB(mixed(GetRValue(first), GetRValue(second)), mixed(GetGValue(first), GetGValue(second)),
               mixed(GetBValue(first), GetBValue(second)));
}

}  // namespace zu::component
