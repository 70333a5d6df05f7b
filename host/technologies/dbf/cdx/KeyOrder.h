#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zu::dbf::cdx {

/// The order of a tree: keys as unsigned bytes over their full length, equal keys by record number.
inline int CompareEntries(const std::byte* leftKey, std::uint32_t leftRecord, const std::byte* rightKey,
                          std::uint32_t rightRecord, std::size_t keyLength) noexcept {
    const int keys = std::memcmp(leftKey, rightKey, keyLength);
    if (keys != 0) return keys;
    if (leftRecord == rightRecord) return 0;
    return leftRecord < rightRecord ? -1 : 1;
}

}  // namespace zu::dbf::cdx
