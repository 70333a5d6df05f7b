#include "host/expression/Fault.h"

#include <algorithm>

#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::expression {

namespace {

constexpr std::size_t kLongestQuote = 40;

char UpperAscii(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// Insertions, deletions, replacements and swaps of neighbours that turn `a` into `b`.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    std::vector<std::size_t> next(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        next[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = UpperAscii(a[i - 1]) == UpperAscii(b[j - 1]);
            next[j] = std::min({row[j] + 1, next[j - 1] + 1, row[j - 1] + (same ? 0U : 1U)});
            const bool swapped = i > 1 && j > 1 && UpperAscii(a[i - 1]) == UpperAscii(b[j - 2]) &&
                                 UpperAscii(a[i - 2]) == UpperAscii(b[j - 1]);
            if (swapped) next[j] = std::min(next[j], before[j - 2] + 1);
        }
        before = row;
        row = next;
    }
    return row[b.size()];
}

}  // namespace

void FailExpected(std::size_t position, std::string_view expected, std::string_view found) {
    FailSyntax(position, "expected " + std::string(expected) + ", found " + std::string(found));
}

void FailSyntax(std::size_t position, std::string_view message) {
    throw Error(ErrorKind::Syntax, std::string(message) + " (character " + std::to_string(position + 1) + ")",
                position);
}

std::string NearestName(std::string_view name, const std::vector<std::string_view>& names) {
    constexpr std::size_t kLongestCompared = 128;
    if (name.empty() || name.size() > kLongestCompared) return {};
    const std::size_t allowed = name.size() < 3 ? 0 : name.size() < 5 ? 1 : 2;
    std::size_t best = allowed + 1;
    std::string nearest;
    for (const std::string_view candidate : names) {
        if (candidate.size() > name.size() + allowed || name.size() > candidate.size() + allowed) continue;
        const std::size_t distance = Distance(name, candidate);
        if (distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string Quoted(std::string_view text) {
    std::string shown(text.substr(0, kLongestQuote));
    while (!shown.empty() && shown.size() < text.size() &&
           (static_cast<unsigned char>(text[shown.size()]) & 0xC0U) == 0x80U) {
        shown.pop_back();
    }
    if (shown.size() < text.size()) shown += "...";
    return "\"" + shown + "\"";
}

std::string Quoted(std::u16string_view text) {
    return Quoted(text::ToUtf8(text.substr(0, 2 * kLongestQuote)));
}

}  // namespace zu::expression
