#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/technologies/Technology.h"

namespace zu::bench {

/// The orders in a table of ours.
class TableOrders {
public:
    explicit TableOrders(const std::string& folder);
    ~TableOrders();
    TableOrders(const TableOrders&) = delete;
    TableOrders& operator=(const TableOrders&) = delete;

    /// Adds orders `first` to `last`, each confirmed on its own, as a batch or not.
    void Append(std::uint32_t first, std::uint32_t last, bool inOne);
    /// A tag on the field of 30 characters beside the one on the number.
    void BuildIndex();
    /// Gives `count` orders, spread over `total`, another amount.
    void Update(std::uint32_t count, std::uint32_t total, bool inOne);
    void Pack();
    /// Ends the program when the table is not sound or has not this many records.
    void Require(std::uint32_t records);

private:
    std::string path_;
    std::unique_ptr<technologies::Technology> technology_;
    std::unique_ptr<technologies::Table> table_;
};

}  // namespace zu::bench
