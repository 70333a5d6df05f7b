#pragma once

#include <string>
#include <vector>

#include "host/technologies/dbf/DbfHeader.h"
#include "portable/text/CodePage.h"

namespace zu::dbf {

/// The names of `fields` in UTF-8, as users see them: decoded with the table's set (files without a mark may
/// hold UTF-8, undefined bytes are read as Latin-1), an empty name replaced by FIELD and its number, a
/// repeated one told apart by "_2", "_3", ...
std::vector<std::string> FieldNames(const std::vector<FieldDescriptor>& fields,
                                    const text::CodePage& codePage, bool hasMark);

}  // namespace zu::dbf
