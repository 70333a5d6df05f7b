#include "runner/commands/PlainLines.h"

#include "runner/TextOutput.h"

namespace zu::runner::commands {
namespace {

constexpr std::size_t kPiece = 32 * 1024;

}  // namespace

bool PlainLines::Line(std::wstring_view text, Style style) {
    if (screen_) {
        screen_->Line(text, style);
        return true;
    }
    held_ += text;
    held_ += out_.lineEnd();
    if (held_.size() >= kPiece) Flush();
    return true;
}

bool PlainLines::Heading(std::wstring_view header, std::wstring_view rule) {
    return Line(header, Style::Heading) && Line(rule, Style::Heading);
}

void PlainLines::Flush() {
    out_.Write(held_);
    held_.clear();
}

}  // namespace zu::runner::commands
