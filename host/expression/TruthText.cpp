#include "host/expression/TruthText.h"

#include <algorithm>
#include <array>

#include "host/expression/Comparison.h"
#include "portable/text/NumberText.h"

namespace zu::expression {

namespace {

constexpr std::array<std::string_view, 7> kTrue{"T", "TRUE", "Y", "YES", ".T.", ".Y.", "ON"};
constexpr std::array<std::string_view, 7> kFalse{"F", "FALSE", "N", "NO", ".F.", ".N.", "OFF"};

bool IsOneOf(std::string_view text, const std::array<std::string_view, 7>& words) noexcept {
    return std::any_of(words.begin(), words.end(), [text](std::string_view word) {
        return std::equal(text.begin(), text.end(), word.begin(), word.end(), [](char a, char b) {
            return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 32) : a) == b;
        });
    });
}

}  // namespace

std::optional<bool> TruthOfText(std::string_view text) noexcept {
    text = WithoutPadding(text);
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    if (text.empty() || IsOneOf(text, kFalse)) return false;
    if (IsOneOf(text, kTrue)) return true;
    double number = 0;
    if (text::ParseNumber(text, number) != text::NumberForm::Number) return std::nullopt;
    return number != 0;
}

}  // namespace zu::expression
