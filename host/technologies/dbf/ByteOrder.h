#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zu::dbf {

static_assert(std::endian::native == std::endian::little, "table files are read in place");

/// A little-endian number anywhere in memory.
template <class T>
T LoadLittle(const std::byte* at) noexcept {
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

template <class T>
void StoreLittle(std::byte* at, T value) noexcept {
    std::memcpy(at, &value, sizeof value);
}

/// Big-endian numbers: memo files of FoxPro and fields of dBASE 7.
inline std::uint32_t LoadBig32(const std::byte* at) noexcept {
    return __builtin_bswap32(LoadLittle<std::uint32_t>(at));
}
inline std::uint64_t LoadBig64(const std::byte* at) noexcept {
    return __builtin_bswap64(LoadLittle<std::uint64_t>(at));
}
inline void StoreBig32(std::byte* at, std::uint32_t value) noexcept {
    StoreLittle(at, __builtin_bswap32(value));
}

}  // namespace zu::dbf
