#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Technology.h"
#include "host/technologies/dbf/cdx/TagDefinition.h"
#include "portable/files/File.h"

namespace zu::dbf::maintenance {

/// Work that writes the files of a table anew: beside the old ones first, which are replaced at the end.
///
/// Each function needs the table for itself: Locked when another program, or an open view, has it. A failure
/// at any point (a full disk, no right to write), and a listener that ends the work, leave the old files as
/// they were. `progress` may be null.

/// Leaves out the records that are marked deleted, and all memo space that no record uses. Answers how many
/// records were left out; a table without deleted records and memos is not touched. Damaged when a memo
/// cannot be read, Unsupported when a tag cannot be rebuilt.
std::uint32_t Pack(files::FileSystem& files, const std::string& path,
                   const technologies::TechnologySettings& settings,
                   technologies::Progress* progress = nullptr);

/// Leaves out all records; numbers that the table draws itself begin at 1 again.
void Zap(files::FileSystem& files, const std::string& path, const technologies::TechnologySettings& settings);

/// Builds all tags of the production index anew from the records.
void Reindex(files::FileSystem& files, const std::string& path,
             const technologies::TechnologySettings& settings, technologies::Progress* progress = nullptr);

/// Adds a tag to the production index, or replaces the tag of the same name; the other tags are built anew
/// too. Errors: those of cdx::BuildCdx.
void CreateTag(files::FileSystem& files, const std::string& path,
               const technologies::TechnologySettings& settings, const cdx::TagDefinition& tag,
               technologies::Progress* progress = nullptr);

/// The same with the default tag for a list of fields; see DefaultTag.
void CreateDefaultTag(files::FileSystem& files, const std::string& path,
                      const technologies::TechnologySettings& settings,
                      const std::vector<technologies::IndexField>& key,
                      technologies::Progress* progress = nullptr);

/// Takes a tag out of the production index; with the last one the index file goes too. NotFound when there is
/// none of that name. Tags that cannot be built anew are no obstacle as long as they are the ones that go.
void DropTag(files::FileSystem& files, const std::string& path,
             const technologies::TechnologySettings& settings, std::string_view name);

}  // namespace zu::dbf::maintenance
