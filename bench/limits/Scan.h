#pragma once

#include <cstdint>

#include "bench/limits/MappedTable.h"

namespace zu::bench {

/// The records that are not deleted, from COUNTRY SE, with AMOUNT above 15000, in one loop over the mapped
/// bytes.
std::uint64_t CountSelected(const MappedTable& table);
/// The sum of QTY over the same records.
std::uint64_t SumSelected(const MappedTable& table);
/// The sum of QTY over `count` records found by their ID, which must be sorted, by halving.
std::uint64_t SumLookups(const MappedTable& table, std::uint32_t count);

}  // namespace zu::bench
