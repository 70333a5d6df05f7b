#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/technologies/Technology.h"
#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/TableWriter.h"
#include "portable/files/FaultyFiles.h"
#include "portable/files/File.h"

namespace zu::dbf::test {

/// A table with a field of every type that is written, a memo and tags of every sort.
inline constexpr const char* kTablePath = "people.dbf";

/// Positions of the fields.
enum Field : std::size_t { kId, kName, kAmount, kBorn, kPaid, kNote, kCode };

/// Makes an empty table in `files`.
void MakeTable(files::FileSystem& files, Format format = Format::FoxPro2);

std::unique_ptr<DbfTable> OpenTable(files::FileSystem& files,
                                    const technologies::TechnologySettings& settings = {});

technologies::Value Text(std::u16string_view text);
technologies::Value Integer(std::int64_t value);
technologies::Value Number(double value);
technologies::Value DecimalValue(std::uint64_t units, std::uint8_t scale, bool negative = false);
technologies::Value Day(int year, int month, int day);
technologies::Value Truth(bool value);
technologies::Value NoValue();

/// The text of a field of a record, as messages show values; "(null)" for Null.
std::string Shown(DbfTable& table, std::uint32_t record, std::size_t field);
/// All fields of a record, joined by "|", a "*" in front when it is marked deleted.
std::string ShownRecord(DbfTable& table, std::uint32_t record);

/// Appends a record with an id and a name.
std::uint32_t Append(DbfTable& table, std::int64_t id, std::u16string_view name);

/// The records with this id, as the tag says; at most `most` of them (0: all).
std::vector<std::uint32_t> SeekId(DbfTable& table, std::int64_t id, std::uint32_t most = 0);

/// Gives a record this id and a name at the far end, in a process that ends at a step of the change (see
/// FaultyFiles); the files work again afterwards.
void DieWhileMoving(files::FaultyFiles& files, std::size_t step, files::FaultyFiles::Fault fault,
                    std::uint32_t record, std::int64_t id);

/// Checks the production index against the table; fails the test for every fault that the checker finds.
void ExpectSoundIndex(files::FileSystem& files);

}  // namespace zu::dbf::test
