#include "host/expression/Operators.h"

#include <cmath>
#include <limits>
#include <string>

#include "host/expression/Comparison.h"
#include "host/expression/DateText.h"
#include "host/expression/Fault.h"
#include "host/expression/FieldReader.h"
#include "host/expression/FieldTest.h"
#include "portable/error/Error.h"

namespace zu::expression {

namespace {

bool IsDay(Type type) noexcept {
    return type == Type::Date || type == Type::DateTime;
}

/// A day and a number of days; results outside the years 1 to 9999 are NULL.
void ShiftDay(const Slot& day, double days, Register& out) {
    constexpr double kMostDays = 4e6;
    if (!(std::fabs(days) < kMostDays)) return out.SetNull(day.type);
    if (day.type == Type::Date) {
        const double shifted = day.julianDay + std::trunc(days);
        if (shifted < kFirstDay || shifted > kLastDay) return out.SetNull(Type::Date);
        return out.SetDate(static_cast<std::int32_t>(shifted));
    }
    const double time = day.milliseconds + std::round(days * kDayMilliseconds);
    const double carry = std::floor(time / kDayMilliseconds);
    const double shifted = day.julianDay + carry;
    if (shifted < kFirstDay || shifted > kLastDay) return out.SetNull(Type::DateTime);
    out.SetDateTime(static_cast<std::int32_t>(shifted),
                    static_cast<std::int32_t>(time - carry * kDayMilliseconds));
}

double DaysBetween(const Slot& later, const Slot& earlier) noexcept {
    return later.julianDay - earlier.julianDay +
           (static_cast<double>(later.milliseconds) - earlier.milliseconds) / kDayMilliseconds;
}

void CheckJoined(const Instruction& step, std::size_t a, std::size_t b) {
    if (a <= kMaxJoinedText && b <= kMaxJoinedText - a) return;
    throw Error(ErrorKind::Overflow, "the joined text would be longer than 16 MB",
                step.node != nullptr ? std::optional(step.node->position) : std::nullopt);
}

}  // namespace

void FailType(const Instruction& step, std::string_view wanted, const Slot& found) {
    const std::size_t position = step.node != nullptr ? step.node->position : 0;
    throw Error(ErrorKind::TypeMismatch,
                "expected " + std::string(wanted) + ", found " + std::string(TypeName(found.type)) +
                    " (character " + std::to_string(position + 1) + ")",
                position);
}

void RequireComparable(const Instruction& step, const Slot& a, const Slot& b) {
    if (!AreComparable(a.type, b.type)) FailType(step, TypeName(a.type), b);
}

double Remainder(double dividend, double divisor) noexcept {
    if (divisor == 0) return std::numeric_limits<double>::quiet_NaN();
    const double rest = std::fmod(dividend, divisor);
    return rest != 0 && (rest < 0) != (divisor < 0) ? rest + divisor : rest;
}

void AddNumbers(const Instruction& step, const Machine&) {
    step.out->SetNumber(step.argument(0).number + step.argument(1).number);
}

void SubtractNumbers(const Instruction& step, const Machine&) {
    step.out->SetNumber(step.argument(0).number - step.argument(1).number);
}

void MultiplyNumbers(const Instruction& step, const Machine&) {
    step.out->SetNumber(step.argument(0).number * step.argument(1).number);
}

void DivideNumbers(const Instruction& step, const Machine&) {
    const double divisor = step.argument(1).number;
    if (divisor == 0) return step.out->SetNull(Type::Number);
    step.out->SetNumber(step.argument(0).number / divisor);
}

void ModuloNumbers(const Instruction& step, const Machine&) {
    step.out->SetNumber(Remainder(step.argument(0).number, step.argument(1).number));
}

void PowerNumbers(const Instruction& step, const Machine&) {
    step.out->SetNumber(std::pow(step.argument(0).number, step.argument(1).number));
}

void NegateNumber(const Instruction& step, const Machine&) {
    step.out->SetNumber(-step.argument(0).number);
}

void JoinTexts(const Instruction& step, const Machine&) {
    const std::string_view a = step.argument(0).text;
    const std::string_view b = step.argument(1).text;
    CheckJoined(step, a.size(), b.size());
    step.out->buffer.assign(a).append(b);
    step.out->SetBuffer();
}

void JoinTextsTight(const Instruction& step, const Machine&) {
    const std::string_view a = step.argument(0).text;
    const std::string_view b = step.argument(1).text;
    CheckJoined(step, a.size(), b.size());
    const std::string_view content = WithoutPadding(a);
    step.out->buffer.assign(content).append(b).append(a.size() - content.size(), ' ');
    step.out->SetBuffer();
}

void AddAny(const Instruction& step, const Machine& machine) {
    const Slot& a = step.argument(0);
    const Slot& b = step.argument(1);
    if (a.type == Type::Text) {
        if (b.type != Type::Text) FailType(step, "two texts to join", b);
        return JoinTexts(step, machine);
    }
    const bool isShift =
        (IsDay(a.type) && b.type == Type::Number) || (a.type == Type::Number && IsDay(b.type));
    if (isShift) return IsDay(a.type) ? ShiftDay(a, b.number, *step.out) : ShiftDay(b, a.number, *step.out);
    if (a.type != Type::Number) FailType(step, "a number, a text or a date to add", a);
    if (b.type != Type::Number) FailType(step, "a number to add", b);
    AddNumbers(step, machine);
}

void SubtractAny(const Instruction& step, const Machine& machine) {
    const Slot& a = step.argument(0);
    const Slot& b = step.argument(1);
    if (a.type == Type::Text) {
        if (b.type != Type::Text) FailType(step, "two texts to join", b);
        return JoinTextsTight(step, machine);
    }
    if (IsDay(a.type) && IsDay(b.type)) return step.out->SetNumber(DaysBetween(a, b));
    if (IsDay(a.type) && b.type == Type::Number) return ShiftDay(a, -b.number, *step.out);
    if (a.type != Type::Number) FailType(step, "a number, a text or a date to subtract from", a);
    if (b.type != Type::Number) FailType(step, "a number to subtract", b);
    SubtractNumbers(step, machine);
}

void CompareAny(const Instruction& step, const Machine&) {
    const Slot& a = step.argument(0);
    const Slot& b = step.argument(1);
    RequireComparable(step, a, b);
    step.out->SetBoolean(Holds(step.op, CompareSlots(a, b)));
}

void CompareForeign(const Instruction& step, const Machine&) {
    step.out->SetBoolean(step.op == Operator::NotEqual);
}

void CompareWithEmpty(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    if (value.isNull && !value.isEmpty) return step.out->SetNull(Type::Boolean);
    if (!AreComparable(value.type, Type::Date)) FailType(step, "a date", value);
    step.out->SetBoolean(Holds(step.op, value.isEmpty ? 0 : 1));
}

void ContainsText(const Instruction& step, const Machine&) {
    const std::string_view sought = step.argument(0).text;
    step.out->SetBoolean(step.argument(1).text.find(sought) != std::string_view::npos);
}

void NotLogical(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    if (value.isNull) return step.out->SetNull(Type::Boolean);
    step.out->SetBoolean(!value.boolean);
}

void AndLogical(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    const bool isFalse = !value.isNull && !value.boolean;
    if (step.isFirst) {
        return value.isNull ? step.out->SetNull(Type::Boolean) : step.out->SetBoolean(value.boolean);
    }
    // A chain that was false before has been left.
    if (isFalse) return step.out->SetBoolean(false);
    if (value.isNull) step.out->SetNull(Type::Boolean);
}

void OrLogical(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    if (step.isFirst) {
        return value.isNull ? step.out->SetNull(Type::Boolean) : step.out->SetBoolean(value.boolean);
    }
    if (!value.isNull && value.boolean) return step.out->SetBoolean(true);
    if (value.isNull) step.out->SetNull(Type::Boolean);
}

void LoadField(const Instruction& step, const Machine& machine) {
    ReadField(*machine.layout, step.field, machine.row, *step.out);
}

void LoadName(const Instruction& step, const Machine& machine) {
    const std::string& name = step.node->boundName;
    Result value;
    value.text.swap(step.out->buffer);
    value.text.clear();
    if (machine.names == nullptr || !machine.names->Provide(name, value)) {
        FailExpected(step.node->position, "a name that is known", Quoted(name));
    }
    Register& out = *step.out;
    out.buffer.swap(value.text);
    out.SetNull(value.type);
    out.isNull = value.isNull;
    out.isEmpty = value.isNull && value.isEmpty;
    out.boolean = value.boolean;
    out.number = value.number;
    out.julianDay = value.julianDay;
    out.milliseconds = value.milliseconds;
    if (value.type == Type::Text) out.text = out.buffer;
    if (value.type == Type::Number && !std::isfinite(value.number)) out.isNull = true;
}

void RunFieldTest(const Instruction& step, const Machine& machine) {
    const Truth truth = step.test->Test(machine.row.record);
    if (truth == Truth::Null) return step.out->SetNull(Type::Boolean);
    step.out->SetBoolean(truth == Truth::True);
}

void CheckType(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    const bool isMissing = value.isNull && value.type == Type::Unknown;
    const bool isDay = step.type == Type::Date && IsDay(value.type);
    if (!isMissing && !isDay && value.type != step.type) FailType(step, TypeName(step.type), value);
    step.out->SetSlot(value);
}

}  // namespace zu::expression
