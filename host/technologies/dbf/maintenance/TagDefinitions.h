#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Maintenance.h"
#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/cdx/TagDefinition.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// The tags that the production index of a table has now; none without one. Damaged when the directory of the
/// index cannot be read. A tag whose order is not known is Unsupported, or, when `leftOut` is given, left out
/// with a sentence about it there.
std::vector<cdx::TagDefinition> DefinitionsOf(files::FileSystem& files, const DbfTable::Content& content,
                                              std::vector<std::string>* leftOut = nullptr);

using technologies::IndexField;

/// The tag for a list of fields: a single field or expression is the key itself; several are joined as texts
/// in fixed widths (dates as DTOS, numbers as STR). A list that is descending as a whole makes a descending
/// tag; in a mixed list the descending parts are held in their descending form. The tag is named after the
/// table. Errors: InvalidArgument for an empty list or a field that does not exist, Syntax for a faulty
/// expression.
cdx::TagDefinition DefaultTag(const TableLayout& layout, const std::vector<IndexField>& fields);

/// The name of the tag that index building makes for a table: its first ten letters, digits and underscores.
std::string DefaultTagName(std::string_view tableName);

}  // namespace zu::dbf::maintenance
