#include "runner/commands/TextWidth.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zu::runner::commands {
namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// Unicode: blocks of characters with the East Asian widths W and F.
constexpr std::array<Range, 12> kWide = {{{0x1100, 0x115F},
                                          {0x2E80, 0x303E},
                                          {0x3041, 0x33FF},
                                          {0x3400, 0x4DBF},
                                          {0x4E00, 0x9FFF},
                                          {0xA000, 0xA4CF},
                                          {0xAC00, 0xD7A3},
                                          {0xF900, 0xFAFF},
                                          {0xFE30, 0xFE6F},
                                          {0xFF00, 0xFF60},
                                          {0xFFE0, 0xFFE6},
                                          {0x1F300, 0x3FFFD}}};

// Unicode: combining marks, joiners and variation selectors.
constexpr std::array<Range, 8> kJoining = {{{0x0300, 0x036F},
                                            {0x0483, 0x0489},
                                            {0x0591, 0x05BD},
                                            {0x064B, 0x065F},
                                            {0x1AB0, 0x1AFF},
                                            {0x200B, 0x200F},
                                            {0x20D0, 0x20FF},
                                            {0xFE00, 0xFE0F}}};

template <std::size_t N>
bool IsIn(const std::array<Range, N>& ranges, std::uint32_t character) noexcept {
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

// Takes the next character off the text, both halves of one beyond the basic plane together.
std::uint32_t Next(std::wstring_view text, std::size_t& position) noexcept {
    const std::uint32_t first = text[position++];
    if ((first & 0xFC00) != 0xD800 || position == text.size()) return first;
    const std::uint32_t second = text[position];
    if ((second & 0xFC00) != 0xDC00) return first;
    ++position;
    return 0x10000 + ((first & 0x3FF) << 10) + (second & 0x3FF);
}

std::size_t WidthOf(std::uint32_t character) noexcept {
    if (character < 0x0300) return 1;
    if (IsIn(kJoining, character)) return 0;
    return IsIn(kWide, character) ? 2 : 1;
}

constexpr wchar_t kEllipsis = 0x2026;

}  // namespace

std::size_t TextWidth(std::wstring_view text) noexcept {
    std::size_t width = 0;
    for (std::size_t position = 0; position < text.size();)
        width += WidthOf(Next(text, position));
    return width;
}

std::wstring CutToWidth(std::wstring_view text, std::size_t width) {
    if (TextWidth(text) <= width) return std::wstring(text);
    if (width == 0) return {};
    std::size_t used = 0;
    std::size_t end = 0;
    for (std::size_t position = 0; position < text.size(); end = position) {
        used += WidthOf(Next(text, position));
        if (used > width - 1) break;
    }
    return std::wstring(text.substr(0, end)) + kEllipsis;
}

std::wstring PadToWidth(std::wstring_view text, std::size_t width, bool right) {
    const std::size_t used = TextWidth(text);
    std::wstring padded(text);
    if (used < width) padded.insert(right ? 0 : padded.size(), width - used, L' ');
    return padded;
}

std::wstring FirstLine(std::wstring_view text) {
    std::wstring line(text.substr(0, text.find_first_of(L"\r\n")));
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }, L' ');
    return line;
}

}  // namespace zu::runner::commands
