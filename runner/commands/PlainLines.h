#pragma once

#include <string>

#include "runner/commands/Screen.h"

namespace zu::runner {
class TextOutput;
}

namespace zu::runner::commands {

/// Lines for a file, a pipe or a terminal without a pager. What goes to a file or a pipe is gathered into
/// large pieces.
class PlainLines final : public LineSink {
public:
    /// Lines go to `screen` when it is not null, else to `out`.
    PlainLines(TextOutput& out, Screen* screen) : out_(out), screen_(screen) {}

    bool Line(std::wstring_view text, Style style = Style::Plain) override;
    bool Heading(std::wstring_view header, std::wstring_view rule) override;
    /// Writes what is still held back. Nothing is written by itself, so that a failure can be told.
    void Flush();

private:
    TextOutput& out_;
    Screen* screen_;
    std::wstring held_;
};

}  // namespace zu::runner::commands
