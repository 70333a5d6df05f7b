#pragma once

#include <string>
#include <string_view>

namespace zu::runner::commands {

/// A line of comma-separated values as RFC 4180 has them: a value with a comma, a quote or a line end in it
/// stands in quotes, its own quotes doubled.
class CsvLine {
public:
    CsvLine& Add(std::wstring_view value);
    /// Without its line end.
    const std::wstring& text() const noexcept { return text_; }
    void Clear();

private:
    std::wstring text_;
    bool begun_ = false;
};

}  // namespace zu::runner::commands
