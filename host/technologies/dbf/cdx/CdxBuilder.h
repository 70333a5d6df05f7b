#pragma once

#include <vector>

#include "host/technologies/ProgressMeter.h"
#include "host/technologies/dbf/cdx/IndexContext.h"
#include "host/technologies/dbf/cdx/TagDefinition.h"
#include "portable/files/File.h"

namespace zu::dbf::cdx {

/// Writes a complete production index for the present records of a table to the empty `file`: each tag's keys
/// sorted, leaves from left to right, the levels above, the tag's header; the directory and the file header
/// come last, so that an index broken off in the middle is none.
///
/// Errors: InvalidArgument (names), Syntax (expressions), Unsupported (a key that no index can hold),
/// Overflow (key or expression too long), AlreadyExists (two records with one key in a candidate tag), and
/// those of `file`.
/// `meter`, when given, hears a step for each record and tag.
void BuildCdx(files::File& file, const std::vector<TagDefinition>& tags, const IndexContext& context,
              technologies::ProgressMeter* meter = nullptr);

/// Throws what BuildCdx would throw for this definition before it reads a record.
void RequireBuildable(const TagDefinition& tag, const IndexContext& context);

}  // namespace zu::dbf::cdx
