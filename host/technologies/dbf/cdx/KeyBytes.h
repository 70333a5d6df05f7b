#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "host/technologies/dbf/ByteOrder.h"

namespace zu::dbf::cdx {

// Values as bytes that compare like the values.

inline void StoreBig64(std::byte* at, std::uint64_t value) noexcept {
    StoreBig32(at, static_cast<std::uint32_t>(value >> 32));
    StoreBig32(at + 4, static_cast<std::uint32_t>(value));
}

inline constexpr double kMillisecondsPerDay = 86'400'000.0;

/// Eight bytes: IEEE double, big-endian; the top bit of positive numbers flipped, all bits of negative ones.
inline void StoreDoubleKey(double value, std::byte* at) noexcept {
    if (value == 0) value = 0;  // minus zero and zero are one key
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t top = std::uint64_t{1} << 63;
    StoreBig64(at, (bits & top) != 0 ? ~bits : bits | top);
}

/// The number of such a key.
inline double LoadDoubleKey(const std::byte* at) noexcept {
    const std::uint64_t bits = LoadBig64(at);
    const std::uint64_t top = std::uint64_t{1} << 63;
    return std::bit_cast<double>((bits & top) != 0 ? bits ^ top : ~bits);
}

/// Four bytes: big-endian, the top bit flipped.
inline void StoreIntegerKey(std::int32_t value, std::byte* at) noexcept {
    StoreBig32(at, static_cast<std::uint32_t>(value) ^ 0x80000000U);
}

/// Eight bytes: units of 1/10000, big-endian, the top bit flipped.
inline void StoreCurrencyKey(std::int64_t units, std::byte* at) noexcept {
    StoreBig64(at, static_cast<std::uint64_t>(units) ^ (std::uint64_t{1} << 63));
}

/// The number that the key of a moment holds.
inline double MomentNumber(std::int32_t julianDay, std::int32_t milliseconds) noexcept {
    return julianDay + milliseconds / kMillisecondsPerDay;
}

}  // namespace zu::dbf::cdx
