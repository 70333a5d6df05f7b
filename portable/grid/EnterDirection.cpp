#include "portable/grid/EnterDirection.h"

#include <algorithm>
#include <array>
#include <utility>

#include "portable/grid/Motion.h"

namespace zu::grid {

namespace {

constexpr std::array<std::pair<std::u16string_view, EnterDirection>, 4> kWords = {{
    {u"RIGHT", EnterDirection::kRight},
    {u"LEFT", EnterDirection::kLeft},
    {u"DOWN", EnterDirection::kDown},
    {u"UP", EnterDirection::kUp},
}};

constexpr char16_t AsciiUpper(char16_t character) noexcept {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - 32) : character;
}

bool SameWord(std::u16string_view left, std::u16string_view right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t a, char16_t b) { return AsciiUpper(a) == b; });
}

}  // namespace

EnterDirection DirectionOf(double number) noexcept {
    for (const int known : {1, 2, 3, 4})
        if (number == known) return static_cast<EnterDirection>(known);
    return EnterDirection::kStay;
}

EnterDirection DirectionOf(std::u16string_view word) {
    for (const auto& [known, direction] : kWords)
        if (SameWord(word, known)) return direction;
    return EnterDirection::kStay;
}

Cell NextCell(Cell from, EnterDirection direction, const Extent& extent) {
    switch (direction) {
        case EnterDirection::kStay:
            return from;
        case EnterDirection::kRight:
            return Moved(from, Motion::kRight, extent, 1);
        case EnterDirection::kLeft:
            return Moved(from, Motion::kLeft, extent, 1);
        case EnterDirection::kDown:
            return Moved(from, Motion::kDown, extent, 1);
        case EnterDirection::kUp:
            return Moved(from, Motion::kUp, extent, 1);
    }
    return from;
}

}  // namespace zu::grid
