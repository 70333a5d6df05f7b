#pragma once

#include <string>
#include <string_view>

namespace zu::runner::commands {

/// Digits in groups of three, as people read them: 1,234,567.
inline std::wstring GroupedDigits(std::wstring_view digits) {
    std::wstring text(digits);
    for (std::size_t i = text.size(); i > 3;) {
        i -= 3;
        if (text[i - 1] != L'-') text.insert(i, 1, L',');
    }
    return text;
}

inline std::wstring Grouped(long long number) {
    return GroupedDigits(std::to_wstring(number));
}

/// "1 record", "2 records".
inline std::wstring Counted(long long number, std::wstring_view one) {
    return Grouped(number) + L" " + std::wstring(one) + (number == 1 ? L"" : L"s");
}

}  // namespace zu::runner::commands
