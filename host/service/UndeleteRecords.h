#pragma once

#include <string_view>

#include "host/technologies/Table.h"

namespace zu::host {

/// Takes the deletion mark off the records that meet the condition; a blank condition means all.
void UndeleteRecords(technologies::Table& table, std::wstring_view condition);

}  // namespace zu::host
