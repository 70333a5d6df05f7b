#include "component/ui/Clipboard.h"

#include <cstring>

namespace zu::component {

namespace {

class OpenClipboardScope {
public:
    explicit OpenClipboardScope(HWND window) noexcept : open_(OpenClipboard(window) != FALSE) {}
    OpenClipboardScope(const OpenClipboardScope&) = delete;
    OpenClipboardScope& operator=(const OpenClipboardScope&) = delete;
    ~OpenClipboardScope() {
        if (open_) CloseClipboard();
    }
    explicit operator bool() const noexcept { return open_; }

private:
    bool open_;
};

}  // namespace

bool CopyText(HWND window, std::wstring_view text) {
    const OpenClipboardScope clipboard(window);
    if (!clipboard || !EmptyClipboard()) return false;
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (!memory) return false;
    auto* const target = static_cast<wchar_t*>(GlobalLock(memory));
    std::memcpy(target, text.data(), text.size() * sizeof(wchar_t));
    target[text.size()] = L'\0';
    GlobalUnlock(memory);
    if (SetClipboardData(CF_UNICODETEXT, memory)) return true;
    GlobalFree(memory);
    return false;
}

std::optional<std::wstring> ClipboardText(HWND window) {
    if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return std::nullopt;
    const OpenClipboardScope clipboard(window);
    if (!clipboard) return std::nullopt;
    const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
    const auto* const text = memory ? static_cast<const wchar_t*>(GlobalLock(memory)) : nullptr;
    if (!text) return std::nullopt;
    const std::size_t most = GlobalSize(memory) / sizeof(wchar_t);
    std::wstring result(text, wcsnlen(text, most));
    GlobalUnlock(memory);
    return result;
}

}  // namespace zu::component
