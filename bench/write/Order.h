#pragma once

#include <cstdint>
#include <string>

namespace zu::bench {

/// One record of the measured table: ten fields, 148 bytes as DBF.
struct Order {
    std::int64_t id = 0;
    std::string customer;  ///< up to 30 characters
    std::string country;   ///< 2
    int day = 0;           ///< Julian day
    std::int64_t cents = 0;
    std::int64_t quantity = 0;
    bool paid = false;
    std::int64_t rate = 0;  ///< ten-thousandths
    std::string note;       ///< up to 60
    std::string code;       ///< 8
    bool deleted = false;

    /// The order with this number (from 1), the same in every run.
    static Order Make(std::uint32_t number);
};

}  // namespace zu::bench
