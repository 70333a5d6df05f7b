#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/technologies/Technology.h"
#include "host/technologies/dbf/cdx/TagDefinition.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Work that writes the files of a table anew: beside the old ones first, which are replaced at the end.
///
/// Each function needs the table for itself: Locked when another program, or an open view, has it. A failure
/// at any point (a full disk, no right to write) leaves the old files as they were.

/// Leaves out the records that are marked deleted, and all memo space that no record uses. Answers how many
/// records were left out; a table without deleted records and memos is not touched. Damaged when a memo
/// cannot be read, Unsupported when a tag cannot be rebuilt.
std::uint32_t Pack(files::FileSystem& files, const std::string& path,
                   const technologies::TechnologySettings& settings);

/// Leaves out all records; numbers that the table draws itself begin at 1 again.
void Zap(files::FileSystem& files, const std::string& path, const technologies::TechnologySettings& settings);

/// Builds all tags of the production index anew from the records.
void Reindex(files::FileSystem& files, const std::string& path,
             const technologies::TechnologySettings& settings);

/// Adds a tag to the production index, or replaces the tag of the same name; the other tags are built anew
/// too. Errors: those of cdx::BuildCdx.
void CreateTag(files::FileSystem& files, const std::string& path,
               const technologies::TechnologySettings& settings, const cdx::TagDefinition& tag);

}  // namespace zu::dbf::maintenance
