#include <array>
#include <cmath>
#include <limits>

#include "host/expression/Comparison.h"
#include "host/expression/NumberFormat.h"
#include "host/expression/Operators.h"
#include "host/expression/functions/Functions.h"
#include "host/expression/functions/Widths.h"

namespace zu::expression {

namespace {

double Argument(const Instruction& step) noexcept {
    return step.argument(0).number;
}

void Abs(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::fabs(Argument(step)));
}
void Int(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::trunc(Argument(step)));
}
void Floor(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::floor(Argument(step)));
}
void Ceiling(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::ceil(Argument(step)));
}
void Exp(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::exp(Argument(step)));
}

// Where a function has no value the result is NaN, which the register turns into NULL.
void Sqrt(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::sqrt(Argument(step)));
}
void Log(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::log(Argument(step)));
}
void Log10(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::log10(Argument(step)));
}

void Sign(const Instruction& step, const Machine&) {
    const double value = Argument(step);
    step.out->SetNumber(value > 0 ? 1 : value < 0 ? -1 : 0);
}

void Mod(const Instruction& step, const Machine&) {
    step.out->SetNumber(Remainder(step.argument(0).number, step.argument(1).number));
}

void Round(const Instruction& step, const Machine&) {
    const double places = step.count() > 1 ? step.argument(1).number : 0;
    step.out->SetNumber(
        RoundDecimal(Argument(step), static_cast<int>(std::fmax(-308, std::fmin(308, places)))));
}

/// MIN and MAX; a date becomes a date-time where the others are.
template <Operator kOp>
void Extreme(const Instruction& step, const Machine&) {
    const Slot* best = &step.argument(0);
    for (std::size_t i = 1; i < step.count(); ++i) {
        RequireComparable(step, *best, step.argument(i));
        if (Holds(kOp, CompareSlots(step.argument(i), *best))) best = &step.argument(i);
    }
    step.out->SetSlot(*best);
    if (step.type == Type::DateTime) step.out->type = Type::DateTime;
}

constexpr NullRule kStrict = NullRule::Strict;

constexpr std::array kFunctions{
    Function{"ABS", "N", 'N', kStrict, nullptr, Abs},
    Function{"INT", "N", 'N', kStrict, nullptr, Int},
    Function{"FLOOR", "N", 'N', kStrict, nullptr, Floor},
    Function{"CEILING", "N", 'N', kStrict, nullptr, Ceiling},
    Function{"ROUND", "Nn", 'N', kStrict, nullptr, Round},
    Function{"MOD", "NN", 'N', kStrict, nullptr, Mod},
    Function{"SQRT", "N", 'N', kStrict, nullptr, Sqrt},
    Function{"EXP", "N", 'N', kStrict, nullptr, Exp},
    Function{"LOG", "N", 'N', kStrict, nullptr, Log},
    Function{"LOG10", "N", 'N', kStrict, nullptr, Log10},
    Function{"SIGN", "N", 'N', kStrict, nullptr, Sign},
    Function{"MIN", "XX*", 'U', kStrict, widths::Widest, Extreme<Operator::Less>},
    Function{"MAX", "XX*", 'U', kStrict, widths::Widest, Extreme<Operator::Greater>},
};

}  // namespace

std::span<const Function> NumberFunctions() {
    return kFunctions;
}

}  // namespace zu::expression
