#pragma once

#include <cstdint>
#include <string>

#include "portable/files/File.h"

namespace zu::samples {

/// Makes `orders.dbf` in `folder` for measurements: dBASE III form without index, ten fields, 147 bytes a
/// record, 5 % marked deleted. With `asText` the same records go to `orders.csv` too (a column DELETED in
/// front, no heading line), for other programs to load.
void WriteBenchOrders(files::FileSystem& system, const std::string& folder, std::uint32_t count, bool asText);

}  // namespace zu::samples
