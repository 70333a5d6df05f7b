#pragma once

#include <cstdint>
#include <span>

namespace zu::text {

/// One single-byte set: the characters of the bytes 80 to FF. Bytes below 80 are ASCII in all of them.
/// Undefined bytes hold U+FFFD, in the Windows sets those of 80 to 9F the control character of the same
/// number.
struct SingleByteTable {
    unsigned number;
    const char16_t* high;  ///< 128 characters
};

/// Every single-byte set that the project knows, ascending by number.
std::span<const SingleByteTable> SingleByteTables() noexcept;

}  // namespace zu::text
