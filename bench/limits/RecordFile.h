#pragma once

#include <cstdint>
#include <string>

namespace zu::bench {

// The limits for writing: the same bytes, moved with as few calls as there can be.

/// Puts the number of records into the header of a table file.
void WriteRecordCount(const std::string& table, std::uint32_t records);
/// Copies a file in blocks of a megabyte. Answers the number of blocks.
std::uint64_t CopyBytes(const std::string& from, const std::string& to);
/// Copies the records that are not deleted to a new table. Answers how many they are.
std::uint64_t CopyLiving(const std::string& from, const std::string& to);
/// Sorts the values of CUSTOMER with their record numbers and writes them one behind the other.
std::uint64_t SortKeys(const std::string& from, const std::string& to);
/// Appends `count` copies of the first record, each with a write of its own and one of the header's count.
std::uint64_t AppendOneByOne(const std::string& table, std::uint32_t count);
/// Overwrites the AMOUNT of `count` records, each with a write of its own.
std::uint64_t UpdateOneByOne(const std::string& table, std::uint32_t count);
/// Writes the deletion mark of `count` records, each with a write of its own.
std::uint64_t MarkOneByOne(const std::string& table, std::uint32_t count);
/// Writes the deletion mark of the records from COUNTRY SE.
std::uint64_t MarkSelected(const std::string& table);

}  // namespace zu::bench
