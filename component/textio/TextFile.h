#pragma once

#include <string_view>

#include "portable/files/File.h"
#include "portable/text/CodePage.h"

namespace zu::component {

/// The code page of text files: that of the system.
const text::CodePage& SystemCodePage();

/// Opens a text file for reading. Throws zu::Error, which names the file.
std::unique_ptr<files::File> OpenTextFile(std::wstring_view path);
/// Makes a text file, in the place of one that is there.
std::unique_ptr<files::File> CreateTextFile(std::wstring_view path);

}  // namespace zu::component
