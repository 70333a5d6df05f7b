#pragma once

#include <string_view>

namespace zu::host {

/// A window with this property (any value) wants messages for the user shown on top of it while it, or a
/// window that it owns, is the active one. Forms of components set it.
inline constexpr const wchar_t* kShowsMessages = L"Zuengine.ShowsMessages";

/// Shows a message box over such a window of the calling thread; false when there is none.
bool ShowOverForm(std::wstring_view text);

}  // namespace zu::host
