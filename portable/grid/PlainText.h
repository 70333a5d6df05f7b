#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zu::grid {

/// What of a cell's text is drawn: the beginning (a longer text would not fit on any screen), line ends and
/// tabs shown as blanks.
std::u16string ShownText(std::u16string_view text, std::size_t mostCharacters = 512);

/// Cells as one line of the clipboard, separated by tabs. A text that holds a tab, a line end or a quotation
/// mark is quoted, so that spreadsheets take it for one cell.
std::u16string ClipboardLine(const std::vector<std::u16string_view>& cells);

/// A pasted text without the line end that spreadsheets put behind a copied cell.
std::u16string_view WithoutFinalLineEnd(std::u16string_view text) noexcept;

/// Line ends as the system's text boxes want them, CR LF, whatever they were.
std::u16string WithSystemLineEnds(std::u16string_view text);

}  // namespace zu::grid
