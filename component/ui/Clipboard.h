#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace zu::component {

/// Puts a text on the clipboard. False when another program holds it.
bool CopyText(HWND window, std::wstring_view text);
/// The clipboard's text; nothing when it holds none.
std::optional<std::wstring> ClipboardText(HWND window);

}  // namespace zu::component
