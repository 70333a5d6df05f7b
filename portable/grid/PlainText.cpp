#include "portable/grid/PlainText.h"

namespace zu::grid {

namespace {

constexpr bool IsHighSurrogate(char16_t character) noexcept {
    return character >= 0xD800 && character < 0xDC00;
}

}  // namespace

std::u16string ShownText(std::u16string_view text, std::size_t mostCharacters) {
    if (text.size() > mostCharacters) {
        text = text.substr(0, mostCharacters);
        if (!text.empty() && IsHighSurrogate(text.back())) text.remove_suffix(1);
    }
    std::u16string shown;
    shown.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
        shown += text[i] < u' ' ? u' ' : text[i];
    }
    return shown;
}

std::u16string ClipboardLine(const std::vector<std::u16string_view>& cells) {
    std::u16string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) line += u'\t';
        if (cells[i].find_first_of(u"\t\r\n\"") == std::u16string_view::npos) {
            line += cells[i];
            continue;
        }
        line += u'"';
        for (const char16_t character : cells[i]) {
            if (character == u'"') line += u'"';
            line += character;
        }
        line += u'"';
    }
    return line;
}

std::u16string_view WithoutFinalLineEnd(std::u16string_view text) noexcept {
    if (!text.empty() && text.back() == u'\n') text.remove_suffix(1);
    if (!text.empty() && text.back() == u'\r') text.remove_suffix(1);
    return text;
}

std::u16string WithSystemLineEnds(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' && text[i] != u'\n') {
            result += text[i];
            continue;
        }
        result += u"\r\n";
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    }
    return result;
}

}  // namespace zu::grid
