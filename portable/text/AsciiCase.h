#pragma once

#include <array>
#include <cstdint>

namespace zu::text {

/// Byte tables that change the case of ASCII letters only.
constexpr std::array<std::uint8_t, 256> AsciiUpperTable() noexcept {
    std::array<std::uint8_t, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        table[byte] = static_cast<std::uint8_t>(byte >= 'a' && byte <= 'z' ? byte - 32 : byte);
    }
    return table;
}

constexpr std::array<std::uint8_t, 256> AsciiLowerTable() noexcept {
    std::array<std::uint8_t, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        table[byte] = static_cast<std::uint8_t>(byte >= 'A' && byte <= 'Z' ? byte + 32 : byte);
    }
    return table;
}

}  // namespace zu::text
