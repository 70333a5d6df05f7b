#pragma once

#include <string>
#include <string_view>

namespace zu::com {

/// A text as messages show it: between quotation marks, its first `most` characters and "..." where it is
/// longer.
inline std::wstring Quoted(std::wstring_view text, std::size_t most) {
    std::wstring quoted = L"\"" + std::wstring(text.substr(0, most));
    return quoted += text.size() > most ? L"...\"" : L"\"";
}

}  // namespace zu::com
