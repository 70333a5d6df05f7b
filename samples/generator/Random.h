#pragma once

#include <cstdint>
#include <span>

namespace zu::samples {

/// Pseudo-random numbers that are the same on every platform and compiler for the same seed
/// (SplitMix64: Steele, Lea, Flood 2014), so that the sample tables are the same bytes everywhere.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15U;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31);
    }

    /// A number from 0 to limit - 1.
    std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(((Next() >> 32) * limit) >> 32);
    }

    /// A number from first to last, both included.
    std::int32_t Between(std::int32_t first, std::int32_t last) {
        return first + static_cast<std::int32_t>(Below(static_cast<std::uint32_t>(last - first) + 1));
    }

    bool Chance(std::uint32_t percent) { return Below(100) < percent; }

    template <typename T>
    const T& Pick(std::span<const T> choices) {
        return choices[Below(static_cast<std::uint32_t>(choices.size()))];
    }

private:
    std::uint64_t state_;
};

}  // namespace zu::samples
