#pragma once

#include <cstddef>
#include <cstdint>

#include "host/technologies/dbf/ByteOrder.h"

namespace zu::dbf::cdx {

/// Below, at or above zero, as unsigned bytes. Without a call: most keys differ in their first eight bytes.
inline int CompareKeys(const std::byte* left, const std::byte* right, std::size_t length) noexcept {
    for (; length >= 8; left += 8, right += 8, length -= 8) {
        const std::uint64_t mine = LoadBig64(left);
        const std::uint64_t other = LoadBig64(right);
        if (mine != other) return mine < other ? -1 : 1;
    }
    for (; length != 0; ++left, ++right, --length) {
        if (*left != *right) return *left < *right ? -1 : 1;
    }
    return 0;
}

/// The order of a tree: keys as unsigned bytes over their full length, equal keys by record number.
inline int CompareEntries(const std::byte* leftKey, std::uint32_t leftRecord, const std::byte* rightKey,
                          std::uint32_t rightRecord, std::size_t keyLength) noexcept {
    const int keys = CompareKeys(leftKey, rightKey, keyLength);
    if (keys != 0) return keys;
    if (leftRecord == rightRecord) return 0;
    return leftRecord < rightRecord ? -1 : 1;
}

}  // namespace zu::dbf::cdx
