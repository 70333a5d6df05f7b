#pragma once

#include "host/expression/Instruction.h"

namespace zu::expression {

// The actions of operators. Arguments are read from the instruction; those of types that were unknown when
// the program was compiled are checked here: TypeMismatch.

/// + and - on two numbers, texts or days, * / % ^ on two numbers: the type is known.
void AddNumbers(const Instruction& step, const Machine& machine);
void SubtractNumbers(const Instruction& step, const Machine& machine);
void MultiplyNumbers(const Instruction& step, const Machine& machine);
/// Division by zero is NULL, here and in Modulo.
void DivideNumbers(const Instruction& step, const Machine& machine);
/// The remainder has the sign of the divisor.
void ModuloNumbers(const Instruction& step, const Machine& machine);
void PowerNumbers(const Instruction& step, const Machine& machine);
void NegateNumber(const Instruction& step, const Machine& machine);
void JoinTexts(const Instruction& step, const Machine& machine);
/// As JoinTexts, but the blanks at the end of the first text come last.
void JoinTextsTight(const Instruction& step, const Machine& machine);
/// + and - for anything: looks at the types of the values.
void AddAny(const Instruction& step, const Machine& machine);
void SubtractAny(const Instruction& step, const Machine& machine);

void CompareAny(const Instruction& step, const Machine& machine);
/// = and <> beside a literal with characters that the code page lacks: nothing equals it.
void CompareForeign(const Instruction& step, const Machine& machine);
/// Beside the literal {}: the other value counts as greater when it has a day and as equal when it is blank.
void CompareWithEmpty(const Instruction& step, const Machine& machine);
void ContainsText(const Instruction& step, const Machine& machine);

void NotLogical(const Instruction& step, const Machine& machine);
/// One condition of a chain: joins its truth to what the chain has so far.
void AndLogical(const Instruction& step, const Machine& machine);
void OrLogical(const Instruction& step, const Machine& machine);

void LoadField(const Instruction& step, const Machine& machine);
void LoadName(const Instruction& step, const Machine& machine);
void RunFieldTest(const Instruction& step, const Machine& machine);
/// Passes its argument on when it has the wanted type (or is NULL).
void CheckType(const Instruction& step, const Machine& machine);

/// Ends the run with a TypeMismatch: `expected WANTED, found ...`.
[[noreturn]] void FailType(const Instruction& step, std::string_view wanted, const Slot& found);
/// Both must be comparable; `step` names the place otherwise.
void RequireComparable(const Instruction& step, const Slot& a, const Slot& b);
/// The remainder of a division with the sign of the divisor; NaN for a divisor of 0.
double Remainder(double dividend, double divisor) noexcept;

/// The longest text that joining makes; memos are the only way to come near.
inline constexpr std::size_t kMaxJoinedText = std::size_t{16} << 20;

}  // namespace zu::expression
