#include "runner/commands/WildcardMatch.h"

#include <windows.h>

#include <cstddef>

namespace zu::runner::commands {
namespace {

bool SameLetter(wchar_t left, wchar_t right) noexcept {
    return left == right || CompareStringOrdinal(&left, 1, &right, 1, TRUE) == CSTR_EQUAL;
}

}  // namespace

bool HasWildcard(std::wstring_view text) noexcept {
    return text.find_first_of(L"*?") != std::wstring_view::npos;
}

bool WildcardMatch(std::wstring_view pattern, std::wstring_view name) noexcept {
    std::size_t at = 0;
    std::size_t star = std::wstring_view::npos;  // the last * met, and where its match ends so far
    std::size_t starEnd = 0;
    for (std::size_t i = 0; i < name.size();) {
        if (at < pattern.size() && pattern[at] == L'*') {
            star = at++;
            starEnd = i;
        } else if (at < pattern.size() && (pattern[at] == L'?' || SameLetter(pattern[at], name[i]))) {
            ++at;
            ++i;
        } else if (star != std::wstring_view::npos) {
            at = star + 1;
            i = ++starEnd;
        } else {
            return false;
        }
    }
    while (at < pattern.size() && pattern[at] == L'*')
        ++at;
    return at == pattern.size();
}

}  // namespace zu::runner::commands
