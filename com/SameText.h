#pragma once

#include <windows.h>

#include <string_view>

namespace zu::com {

/// Two names are the same but for case, in any alphabet, as the system compares names of files: without a
/// language. Names of different lengths never are.
inline bool SameText(std::wstring_view left, std::wstring_view right) noexcept {
    return left.size() == right.size() &&
           CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace zu::com
