#pragma once

#include <cstdint>
#include <string>

#include "portable/files/File.h"

namespace zu::samples {

/// Makes `orders.dbf` with its memo and index in `folder`: Visual FoxPro form, code page 1252, about 4 % of
/// the records marked deleted. Order numbers run from 1 to `count`; customers from 1 to `customers`.
///
/// Tags: ID, CUSTOMER (customer number), ORDERED (date), AMOUNT, COUNTRY (country and date), LATEST (date,
/// descending), OPEN (only unpaid orders, by date).
void WriteOrders(files::FileSystem& system, const std::string& folder, std::uint32_t count,
                 std::uint32_t customers);

}  // namespace zu::samples
