#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zu::runner::commands {

/// How many columns of a terminal a text takes: two for the wide characters of East Asia and for pictures,
/// none for marks that join the character before them.
std::size_t TextWidth(std::wstring_view text) noexcept;

/// The text in at most `width` columns; what does not fit is cut off and an ellipsis stands for it.
std::wstring CutToWidth(std::wstring_view text, std::size_t width);

/// The text filled up with blanks to `width` columns, behind it or, with `right`, in front. A longer text
/// stays as it is.
std::wstring PadToWidth(std::wstring_view text, std::size_t width, bool right);

/// The first line of a text, with blanks for control characters, as one line of a table shows it.
std::wstring FirstLine(std::wstring_view text);

}  // namespace zu::runner::commands
