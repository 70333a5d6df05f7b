#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/dbf/DbfHeader.h"
#include "portable/text/CodePage.h"

namespace zu::dbf {

/// The character set of a table: what the file NAME.cpg beside it says (its text is `sideFile`, empty for
/// none), else the mark in the header, else the set `fallback` that the settings give, else Windows-1252.
/// A name or mark that is not known adds to `warnings`.
const text::CodePage& ChooseCodePage(const DbfHeader& header, std::string_view sideFile, unsigned fallback,
                                     std::vector<std::string>& warnings);

}  // namespace zu::dbf
