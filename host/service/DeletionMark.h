#pragma once

#include <cstdint>
#include <span>

#include "host/technologies/Table.h"

namespace zu::host {

/// Marks a record as deleted, or takes the mark off, and saves that alone. False when the mark was as wanted
/// already, also when another process was quicker.
bool MarkRecord(technologies::Table& table, std::uint32_t number, bool deleted);

/// As Table::MarkRecords, told to the listener of the thread's messages under the name `job`. False: the user
/// has ended it, and what is marked until then stays.
bool MarkRecords(technologies::Table& table, const wchar_t* job, std::span<const std::uint32_t> records,
                 bool deleted, technologies::MarkOutcome& outcome);

}  // namespace zu::host
