#pragma once

#include <cstddef>
#include <string>

#include "host/expression/Instruction.h"
#include "portable/error/Error.h"

namespace zu::expression {

/// The longest text that SPACE, REPLICATE, the PAD functions and STRTRAN make out of little: 65,535 bytes.
inline constexpr std::size_t kMaxMadeText = 65535;

/// A count from a program as a number of units, 0 for negative ones. Counts above the limit end the run: no
/// condition needs them, and memory is for tables.
inline std::size_t TextCount(const Instruction& step, double count) {
    if (!(count >= 1)) return 0;
    if (count >= static_cast<double>(kMaxMadeText) + 1) {
        throw Error(
            ErrorKind::Overflow,
            "expected a length of at most 65535 (character " + std::to_string(step.node->position + 1) + ")",
            step.node->position);
    }
    return static_cast<std::size_t>(count);
}

/// As TextCount, for positions and lengths that only cut: anything beyond the text is its end.
inline std::size_t CutCount(double count) noexcept {
    constexpr double kBeyond = 1e9;
    if (!(count >= 1)) return 0;
    return static_cast<std::size_t>(count < kBeyond ? count : kBeyond);
}

}  // namespace zu::expression
