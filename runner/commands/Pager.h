#pragma once

#include <string>

#include "runner/commands/Screen.h"

namespace zu::runner::commands {

/// Shows lines page by page: the space bar brings the next page, Enter the next line, q and Escape end it.
/// What fits on one page is shown without a question.
class Pager final : public LineSink {
public:
    explicit Pager(Screen& screen) : screen_(screen) {}

    bool Line(std::wstring_view text, Style style = Style::Plain) override;
    bool Heading(std::wstring_view header, std::wstring_view rule) override;

private:
    bool Ask();
    void Put(std::wstring_view text, Style style);
    std::size_t RowsOf(std::wstring_view text) const;

    Screen& screen_;
    std::wstring header_;
    std::wstring rule_;
    std::size_t used_ = 0;  ///< rows of the page in hand
    bool ended_ = false;
};

}  // namespace zu::runner::commands
