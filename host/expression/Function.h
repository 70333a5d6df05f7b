#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "host/expression/Instruction.h"

namespace zu::expression {

/// One function of the language, or one of its forms where the arguments decide (INSTR, DATE).
struct Function {
    /// Sets `width` and `isFixedWidth` of a call whose arguments are bound.
    using WidthRule = void (*)(Node& call);

    std::string_view name;  ///< as in canonical texts
    /// One letter for each argument: T text, N number, D date or date-time, B logical, X anything; a small
    /// letter may be left out; "*" at the end repeats the last one.
    std::string_view arguments;
    /// T, N, D, M (date-time), B; a digit: the type of that argument (from 1); U: the common type of the
    /// arguments that are values (all of X in a row, the ones behind conditions).
    char result;
    NullRule nulls;
    WidthRule width;
    Instruction::Action run;
    bool usesRow = false;         ///< depends on the record besides its arguments
    std::string_view alias = {};  ///< another name of the same function

    std::size_t leastArguments() const noexcept;
    std::size_t mostArguments() const noexcept;  ///< SIZE_MAX: any number
    char argumentLetter(std::size_t index) const noexcept;
};

/// The function of this name (ASCII upper case) for this number of arguments. When there is none for the
/// number, any one of the name; null when there is no such name.
const Function* FindFunction(std::string_view name, std::size_t arguments) noexcept;

/// All names, for suggestions and for the test that every function is documented.
std::span<const std::string_view> FunctionNames();

}  // namespace zu::expression
