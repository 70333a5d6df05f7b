#pragma once

#include <string>
#include <string_view>

namespace zu::runner {

/// The characters of a text file: UTF-8 or UTF-16 by its byte order mark, UTF-16 without one when it plainly
/// is (a zero byte in the first character), UTF-8 when the bytes are well-formed, otherwise the ANSI code
/// page.
std::wstring DecodeFile(std::string_view bytes);

/// The characters of a piece of a text without marks: UTF-8 when well-formed, otherwise the ANSI code page.
std::wstring DecodePiece(std::string_view bytes);

}  // namespace zu::runner
