#include "runner/commands/Pager.h"

#include <algorithm>

#include "runner/commands/TextWidth.h"

namespace zu::runner::commands {
namespace {

constexpr wchar_t kEscape = 0x1B;

}  // namespace

std::size_t Pager::RowsOf(std::wstring_view text) const {
    const std::size_t width = std::max<std::size_t>(screen_.width(), 1);
    return std::max<std::size_t>((TextWidth(text) + width - 1) / width, 1);
}

void Pager::Put(std::wstring_view text, Style style) {
    screen_.Line(text, style);
    used_ += RowsOf(text);
}

bool Pager::Ask() {
    screen_.ShowPrompt(L"-- Space: next page, Enter: next line, Q: end --");
    for (;;) {
        const wchar_t key = screen_.ReadKey();
        if (key == L' ') {
            screen_.ErasePrompt();
            used_ = 0;
            if (!header_.empty()) {
                Put(header_, Style::Heading);
                Put(rule_, Style::Heading);
            }
            return true;
        }
        if (key == L'\r' || key == L'\n') {
            screen_.ErasePrompt();
            used_ -= std::min<std::size_t>(used_, 1);
            return true;
        }
        if (key == L'q' || key == L'Q' || key == kEscape || key == 3) {
            screen_.ErasePrompt();
            return false;
        }
    }
}

bool Pager::Line(std::wstring_view text, Style style) {
    // The last row is the prompt's.
    const std::size_t room = std::max<std::size_t>(screen_.height(), 4) - 1;
    if (!ended_ && used_ + RowsOf(text) > room) ended_ = !Ask();
    if (ended_) return false;
    Put(text, style);
    return true;
}

bool Pager::Heading(std::wstring_view header, std::wstring_view rule) {
    header_ = header;
    rule_ = rule;
    return Line(header, Style::Heading) && Line(rule, Style::Heading);
}

}  // namespace zu::runner::commands
