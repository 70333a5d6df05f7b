#pragma once

#include <windows.h>

#include "runner/commands/Screen.h"

namespace zu::runner {
class TextOutput;
}

namespace zu::runner::commands {

/// The console behind standard output and input.
class Terminal final : public Screen {
public:
    explicit Terminal(TextOutput& out);

    /// Standard output is a console.
    bool isConsole() const noexcept;
    /// Both output and input are, so that somebody can be asked.
    bool isInteractive() const noexcept;

    /// Of the window; 80 by 25 when the system does not say.
    std::size_t width() const override;
    std::size_t height() const override;
    /// In colour unless the environment variable NO_COLOR is set to anything.
    void Line(std::wstring_view text, Style style) override;
    void ShowPrompt(std::wstring_view text) override;
    void ErasePrompt() override;
    wchar_t ReadKey() override;

private:
    WORD AttributesOf(Style style) const noexcept;

    TextOutput& out_;
    HANDLE handle_;
    HANDLE input_;
    bool colours_ = false;
    WORD usual_ = 0;
    std::size_t prompt_ = 0;
};

}  // namespace zu::runner::commands
