#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "portable/textio/ImportFormat.h"

namespace zu::textio {

/// Cuts one line after the other into tokens. `Char` as for FieldRenderer.
///
/// Delimited lines: a token that begins with the quote character runs to the closing quote, doubled quotes
/// inside it stand for one, and what stands between the closing quote and the separator is dropped. The
/// separator is matched character by character: a character that breaks a match begins no new one, so "aab"
/// has no separator "ab" in it. Lines of fixed length are cut by widths. A format of neither kind gives empty
/// tokens and never gets on.
template <class Char>
class LineCutter {
public:
    using View = std::basic_string_view<Char>;

    /// `separator` and `quote` as the file's characters; an empty quote turns quoting off.
    LineCutter(int preset, std::basic_string<Char> separator, std::basic_string<Char> quote);

    /// `line` must live while it is cut.
    void Start(View line) noexcept {
        line_ = line;
        position_ = 0;
    }
    bool isAtEnd() const noexcept { return position_ >= line_.size(); }
    /// The next token; valid until the next call. `width` counts only in lines of fixed length.
    View Next(std::size_t width);

private:
    View NextDelimited();
    View NextFixed(std::size_t width) noexcept;
    /// Steps behind the next separator from `position_`; answers where the separator began, or the line's
    /// end.
    std::size_t PassSeparator() noexcept;
    View WithoutDoubledQuotes(View token);

    int preset_;
    std::basic_string<Char> separator_;
    bool quoting_;
    Char quote_;
    View line_;
    std::size_t position_ = 0;
    std::basic_string<Char> token_;
};

extern template class LineCutter<char>;
extern template class LineCutter<char16_t>;

}  // namespace zu::textio
