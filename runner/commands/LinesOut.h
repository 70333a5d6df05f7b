#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "runner/commands/Pager.h"
#include "runner/commands/PlainLines.h"
#include "runner/commands/Screen.h"

namespace zu::runner::commands {

class CommandRun;

/// Standard output of a command in the form that the user asks for: for people, page by page on a terminal,
/// or as JSON or comma-separated values.
class LinesOut {
public:
    enum class Form { People, Json, Csv };
    /// Work must not wait for somebody to turn the page.
    enum class Paging { Never, OnTerminal };

    /// Throws zu::Error (InvalidArgument) when two forms are asked for.
    explicit LinesOut(CommandRun& run, Paging paging = Paging::Never);

    Form form() const noexcept { return form_; }
    /// Columns that a line has room for; 0: no limit.
    std::size_t width() const noexcept { return width_; }
    LineSink& sink() noexcept { return pages_ ? static_cast<LineSink&>(pager_) : lines_; }
    /// Nobody wants to see more.
    bool ended() const noexcept { return ended_; }

    void Line(std::wstring_view text, Style style = Style::Plain);
    /// The header of columns, to be repeated on each page.
    void Heading(std::wstring_view header, std::wstring_view rule);
    /// An element of the one array that is the whole output in JSON.
    void JsonElement(std::wstring_view json);
    /// Writes what is held back: between tables, so that nobody waits for what is known.
    void Flush() { lines_.Flush(); }
    /// Ends the array and writes what is held back.
    void Finish();

private:
    CommandRun& run_;
    Form form_;
    bool pages_;
    std::size_t width_;
    Pager pager_;
    PlainLines lines_;
    bool ended_ = false;
    bool hasElements_ = false;
};

}  // namespace zu::runner::commands
