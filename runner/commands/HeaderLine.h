#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zu::runner {
class TextOutput;
}

namespace zu::runner::commands {

/// The names of fields as the first line of a delimited text file. An empty quote: none stands around them.
std::wstring HeaderLine(const std::vector<std::wstring>& names, std::wstring_view separator,
                        std::wstring_view quote);

/// The names that such a line holds.
std::vector<std::wstring> NamesInHeader(std::wstring_view line, std::wstring_view separator,
                                        std::wstring_view quote);

/// Copies a text file with one more line in front, in the system's code page. Throws zu::Error.
void CopyWithHeader(const std::wstring& from, std::wstring_view header, const std::wstring& to);

/// Copies a text file without its first line, and answers that line. Throws zu::Error.
std::wstring CopyWithoutHeader(const std::wstring& from, const std::wstring& to);

/// Writes the lines of a text file in the system's code page to an output, which has an encoding of its own.
void WriteLinesTo(TextOutput& out, const std::wstring& path);

}  // namespace zu::runner::commands
