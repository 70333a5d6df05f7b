#pragma once

#include <cstddef>
#include <string_view>

namespace zu::runner::commands {

/// How a line stands out on a terminal.
enum class Style { Plain, Heading, Faint, Good, Bad };

/// A terminal as the pager uses it.
class Screen {
public:
    virtual ~Screen() = default;

    virtual std::size_t width() const = 0;
    virtual std::size_t height() const = 0;
    virtual void Line(std::wstring_view text, Style style) = 0;
    /// A line that is taken away again.
    virtual void ShowPrompt(std::wstring_view text) = 0;
    virtual void ErasePrompt() = 0;
    /// Waits for a key: a character, '\r' for Enter, 0x1B for Escape, 0 for any other key; 'q' when no more
    /// keys can come.
    virtual wchar_t ReadKey() = 0;
};

/// Takes lines one by one.
class LineSink {
public:
    virtual ~LineSink() = default;

    /// False: nobody wants to see more.
    virtual bool Line(std::wstring_view text, Style style = Style::Plain) = 0;
    /// Lines to be repeated where a new page begins. They are shown at once too.
    virtual bool Heading(std::wstring_view header, std::wstring_view rule) = 0;
};

}  // namespace zu::runner::commands
