#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/limits/InputFile.h"

namespace zu::bench {

/// One field of a table: its type letter, where it begins in a record, how wide it is, and its decimal
/// places.
struct Column {
    std::string name;
    char type;
    unsigned offset;
    unsigned width;
    unsigned decimals;
};

/// The records of a table file of plain fields, mapped into memory for reading. Nothing is checked: the files
/// are those that the measurement has made itself.
class MappedTable {
public:
    explicit MappedTable(const std::string& path);

    std::uint32_t count() const noexcept { return count_; }
    unsigned recordLength() const noexcept { return recordLength_; }
    unsigned headerLength() const noexcept { return headerLength_; }
    const char* bytes() const noexcept { return file_.begin(); }
    const std::vector<Column>& columns() const noexcept { return columns_; }
    const Column& column(const char* name) const;
    /// The bytes of a record, counted from 0; the first one is the deletion mark.
    const char* record(std::uint32_t number) const noexcept {
        return bytes() + headerLength_ + std::size_t{number} * recordLength_;
    }

private:
    InputFile file_;
    std::uint32_t count_ = 0;
    unsigned headerLength_ = 0;
    unsigned recordLength_ = 0;
    std::vector<Column> columns_;
};

/// The digits of a number field without its point, as a whole number (12.50 is 1250).
inline std::int64_t Digits(const char* at, unsigned width) {
    std::int64_t number = 0;
    for (unsigned i = 0; i < width; ++i)
        if (at[i] >= '0' && at[i] <= '9') number = number * 10 + (at[i] - '0');
    return number;
}

}  // namespace zu::bench
