#include "portable/grid/SearchText.h"

#include <algorithm>

#include "portable/text/CaseMap.h"

namespace zu::grid {

namespace {

/// One element of a pattern that stands for one character (or, for "[]", for none).
struct Element {
    std::u16string_view text;
    std::size_t length = 1;  ///< in the pattern
    bool isList = false;
};

Element ElementAt(std::u16string_view pattern, std::size_t at) noexcept {
    if (pattern[at] == u'[') {
        const std::size_t close = pattern.find(u']', at + 1);
        if (close != std::u16string_view::npos)
            return {pattern.substr(at + 1, close - at - 1), close - at + 1, true};
    }
    return {pattern.substr(at, 1), 1, false};
}

bool InList(char16_t character, std::u16string_view list) noexcept {
    const bool negated = !list.empty() && list.front() == u'!';
    if (negated) list.remove_prefix(1);
    bool found = false;
    for (std::size_t i = 0; i < list.size() && !found; ++i) {
        if (i + 2 < list.size() && list[i + 1] == u'-') {
            found = character >= list[i] && character <= list[i + 2];
            i += 2;
        } else {
            found = character == list[i];
        }
    }
    return found != negated;
}

bool Matches(char16_t character, const Element& element) noexcept {
    if (element.isList) return InList(character, element.text);
    switch (element.text.front()) {
        case u'?':
            return true;
        case u'#':
            return character >= u'0' && character <= u'9';
        default:
            return character == element.text.front();
    }
}

}  // namespace

std::u16string_view WithoutLeadingBlanks(std::u16string_view value) noexcept {
    const std::size_t first = value.find_first_not_of(u' ');
    return first == std::u16string_view::npos ? std::u16string_view() : value.substr(first);
}

bool BeginsWith(std::u16string_view value, std::u16string_view text) noexcept {
    return value.size() >= text.size() &&
           std::equal(text.begin(), text.end(), value.begin(),
                      [](char16_t a, char16_t b) { return text::ToUpper(a) == text::ToUpper(b); });
}

bool MatchesPattern(std::u16string_view value, std::u16string_view pattern) noexcept {
    constexpr std::size_t kNone = std::u16string_view::npos;
    std::size_t v = 0;
    std::size_t p = 0;
    // Where to go on when the rest does not fit: behind the last asterisk, with one more character under it.
    std::size_t retryPattern = kNone;
    std::size_t retryValue = 0;
    for (;;) {
        if (p < pattern.size()) {
            if (pattern[p] == u'*') {
                retryPattern = ++p;
                retryValue = v;
                continue;
            }
            const Element element = ElementAt(pattern, p);
            if (element.isList && element.text.empty()) {
                p += element.length;
                continue;
            }
            if (v < value.size() && Matches(value[v], element)) {
                ++v;
                p += element.length;
                continue;
            }
        } else if (v == value.size()) {
            return true;
        }
        if (retryPattern == kNone || retryValue >= value.size()) return false;
        p = retryPattern;
        v = ++retryValue;
    }
}

std::optional<Row> FindNext(Row start, Row count, bool loop, const std::function<bool(Row)>& matches) {
    for (Row record = std::max<Row>(start + 1, 0); record < count; ++record)
        if (matches(record)) return record;
    if (!loop) return std::nullopt;
    for (Row record = 0; record <= start && record < count; ++record)
        if (matches(record)) return record;
    return std::nullopt;
}

}  // namespace zu::grid
