#pragma once

#include <string>

#include "host/technologies/dbf/RecordAccess.h"
#include "host/technologies/dbf/cdx/CdxFile.h"

namespace zu::dbf::cdx {

class OpenTag;

/// Looks for signs that a program without index support changed the table: the last record, the first and
/// some between must be in the tag under the keys that they have now (or not in it where UNIQUE or FOR leave
/// them out), and small trees must have as many keys as the table has records.
///
/// Answers what is wrong, in words, or an empty text. Damaged when pages on the way are not sound.
std::string FindStaleness(CdxFile& file, OpenTag& tag, RecordAccess& records);

}  // namespace zu::dbf::cdx
