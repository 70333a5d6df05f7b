#pragma once

#include <cstdint>
#include <string>

#include "portable/files/File.h"

namespace zu::samples {

/// Makes `customers.dbf` with its index in `folder`: FoxPro 2 form, code page 1252, about 3 % of the records
/// marked deleted. Customer numbers run from 1 to `count` in record order.
///
/// Tags: ID, NAME (upper-cased), COUNTRY (country and date of the first order), CREDIT (descending), ACTIVE
/// (only active customers, by name).
void WriteCustomers(files::FileSystem& system, const std::string& folder, std::uint32_t count);

}  // namespace zu::samples
