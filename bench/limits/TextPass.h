#pragma once

#include <cstdint>
#include <string>

namespace zu::bench {

// The limits for text files: one table of plain fields, one loop over its records, blocks of a megabyte.
// Nothing is checked and nothing can be chosen. Each answers the number of lines.

/// Writes the records that are not deleted as delimited text.
std::uint64_t ExportDelimited(const std::string& table, const std::string& text);
/// Writes the records that are not deleted as lines of their fields' widths.
std::uint64_t ExportFixed(const std::string& table, const std::string& text);
/// Makes a table with the fields of `layout` from delimited text that ExportDelimited wrote.
std::uint64_t ImportDelimited(const std::string& layout, const std::string& text, const std::string& table);
/// The same for lines of ExportFixed.
std::uint64_t ImportFixed(const std::string& layout, const std::string& text, const std::string& table);

}  // namespace zu::bench
