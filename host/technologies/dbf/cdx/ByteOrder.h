#pragma once

#include <cstddef>
#include <cstdint>

namespace zu::dbf::cdx {

// Index files mix both byte orders: headers are little-endian, the entries of interior pages and the keys
// big-endian so that they compare as plain bytes.

inline std::uint16_t LoadLittle16(const std::byte* at) noexcept {
    return static_cast<std::uint16_t>(std::to_integer<unsigned>(at[0]) | std::to_integer<unsigned>(at[1])
                                                                             << 8);
}

inline std::uint32_t LoadLittle32(const std::byte* at) noexcept {
    return std::uint32_t{LoadLittle16(at)} | std::uint32_t{LoadLittle16(at + 2)} << 16;
}

inline std::uint64_t LoadLittle64(const std::byte* at) noexcept {
    return std::uint64_t{LoadLittle32(at)} | std::uint64_t{LoadLittle32(at + 4)} << 32;
}

inline std::uint32_t LoadBig32(const std::byte* at) noexcept {
    return std::to_integer<std::uint32_t>(at[0]) << 24 | std::to_integer<std::uint32_t>(at[1]) << 16 |
           std::to_integer<std::uint32_t>(at[2]) << 8 | std::to_integer<std::uint32_t>(at[3]);
}

inline std::uint64_t LoadBig64(const std::byte* at) noexcept {
    return std::uint64_t{LoadBig32(at)} << 32 | std::uint64_t{LoadBig32(at + 4)};
}

inline void StoreLittle16(std::byte* at, std::uint16_t value) noexcept {
    at[0] = static_cast<std::byte>(value);
    at[1] = static_cast<std::byte>(value >> 8);
}

inline void StoreLittle32(std::byte* at, std::uint32_t value) noexcept {
    StoreLittle16(at, static_cast<std::uint16_t>(value));
    StoreLittle16(at + 2, static_cast<std::uint16_t>(value >> 16));
}

inline void StoreBig32(std::byte* at, std::uint32_t value) noexcept {
    for (int i = 0; i < 4; ++i)
        at[i] = static_cast<std::byte>(value >> (24 - 8 * i));
}

inline void StoreBig64(std::byte* at, std::uint64_t value) noexcept {
    StoreBig32(at, static_cast<std::uint32_t>(value >> 32));
    StoreBig32(at + 4, static_cast<std::uint32_t>(value));
}

}  // namespace zu::dbf::cdx
