#include "host/expression/LikePattern.h"

#include "host/expression/CharacterUnits.h"
#include "host/expression/Comparison.h"

namespace zu::expression {

namespace {

bool IsAny(char c) noexcept {
    return c == '%' || c == '*';
}
bool IsOne(char c) noexcept {
    return c == '_' || c == '?';
}

}  // namespace

bool MatchesLike(std::string_view text, std::string_view pattern, bool countsCharacters) noexcept {
    text = WithoutPadding(text);
    pattern = WithoutPadding(pattern);
    std::size_t t = 0;
    std::size_t p = 0;
    // Where to go on when what follows the last "%" does not fit: one character further in the text.
    std::size_t retryPattern = std::string_view::npos;
    std::size_t retryText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && IsAny(pattern[p])) {
            retryPattern = ++p;
            retryText = t;
        } else if (p < pattern.size() && IsOne(pattern[p])) {
            ++p;
            t += UnitLength(text, t, countsCharacters);
        } else if (p < pattern.size() && pattern[p] == text[t]) {
            ++p;
            ++t;
        } else if (retryPattern != std::string_view::npos) {
            p = retryPattern;
            retryText += UnitLength(text, retryText, countsCharacters);
            t = retryText;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && IsAny(pattern[p]))
        ++p;
    return p == pattern.size();
}

std::optional<std::string_view> PrefixOf(std::string_view pattern) noexcept {
    pattern = WithoutPadding(pattern);
    std::size_t length = pattern.size();
    while (length > 0 && IsAny(pattern[length - 1]))
        --length;
    if (length == pattern.size()) return std::nullopt;
    const std::string_view prefix = pattern.substr(0, length);
    if (prefix.find_first_of("%*_?") != std::string_view::npos) return std::nullopt;
    if (WithoutPadding(prefix).size() != prefix.size()) return std::nullopt;
    return prefix;
}

}  // namespace zu::expression
