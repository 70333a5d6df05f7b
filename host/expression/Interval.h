#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "host/expression/Node.h"

namespace zu::expression {

/// A set of whole numbers: those from `low` to `high`, or all others.
struct Interval {
    std::int64_t low = std::numeric_limits<std::int64_t>::min();
    std::int64_t high = std::numeric_limits<std::int64_t>::max();
    bool isNegated = false;

    bool Contains(std::int64_t value) const noexcept { return (value >= low && value <= high) != isNegated; }
};

/// A constant on the scale of a field: the greatest whole number of units not above it.
struct ScaledConstant {
    std::int64_t floor = 0;
    bool isExact = true;
};

/// The units that stand in relation `op` to the constant.
inline Interval IntervalOf(Operator op, const ScaledConstant& constant) noexcept {
    Interval interval;
    switch (op) {
        case Operator::Equal:
        case Operator::NotEqual:
            interval.low = constant.isExact ? constant.floor : 1;
            interval.high = constant.isExact ? constant.floor : 0;
            interval.isNegated = op == Operator::NotEqual;
            break;
        case Operator::Less:
            interval.high = constant.isExact ? constant.floor - 1 : constant.floor;
            break;
        case Operator::LessEqual:
            interval.high = constant.floor;
            break;
        case Operator::Greater:
            interval.low = constant.floor + 1;
            break;
        default:
            interval.low = constant.isExact ? constant.floor : constant.floor + 1;
            break;
    }
    return interval;
}

inline Interval Intersection(const Interval& a, const Interval& b) noexcept {
    return {a.low > b.low ? a.low : b.low, a.high < b.high ? a.high : b.high, false};
}

/// The same for doubles.
struct RealInterval {
    double low = -std::numeric_limits<double>::infinity();
    double high = std::numeric_limits<double>::infinity();
    bool isLowOpen = false;
    bool isHighOpen = false;
    bool isNegated = false;

    bool Contains(double value) const noexcept {
        const bool above = isLowOpen ? value > low : value >= low;
        const bool below = isHighOpen ? value < high : value <= high;
        return (above && below) != isNegated;
    }
};

inline RealInterval RealIntervalOf(Operator op, double constant) noexcept {
    RealInterval interval;
    if (op != Operator::Less && op != Operator::LessEqual) {
        interval.low = constant;
        interval.isLowOpen = op == Operator::Greater;
    }
    if (op != Operator::Greater && op != Operator::GreaterEqual) {
        interval.high = constant;
        interval.isHighOpen = op == Operator::Less;
    }
    interval.isNegated = op == Operator::NotEqual;
    return interval;
}

/// `value` with `decimals` places as units; constants beyond 18 digits end at the next number beyond.
/// `digits` is the number as written, or empty: then its shortest decimal form counts. Nothing when the
/// digits cannot be kept exactly.
std::optional<ScaledConstant> ScaleConstant(double value, std::string_view digits, unsigned decimals);

}  // namespace zu::expression
