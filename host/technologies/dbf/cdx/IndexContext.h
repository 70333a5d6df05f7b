#pragma once

#include <string>

#include "host/expression/RecordLayout.h"
#include "host/technologies/dbf/RecordAccess.h"
#include "portable/text/CodePage.h"

namespace zu::dbf::cdx {

/// The table that an index belongs to. Layout, records and code page must outlive whoever holds the context.
struct IndexContext {
    const expression::RecordLayout& layout;
    RecordAccess& records;
    std::string tableName;  ///< as shown in messages, and the name of the tag that is the default
    const text::CodePage& codePage;
};

}  // namespace zu::dbf::cdx
