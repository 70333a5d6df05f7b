#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/expression/Node.h"
#include "host/expression/Slot.h"
#include "portable/text/CodePage.h"

namespace zu::expression {

class FieldTest;

/// What instructions work on besides their registers.
struct Machine {
    const RecordLayout* layout = nullptr;  ///< null in programs without a layout
    const text::CodePage* codePage = nullptr;
    bool countsCharacters = false;  ///< texts are UTF-8: lengths and positions count characters, not bytes
    Row row;
    NameSource* names = nullptr;
};

/// Which arguments make the result NULL before the instruction is asked.
enum class NullRule : std::uint8_t {
    Strict,      ///< every null or empty one
    TakesEmpty,  ///< every null one; blank dates come through, marked empty
    Aware        ///< none
};

/// One step of a program.
struct Instruction {
    using Action = void (*)(const Instruction& step, const Machine& machine);

    Action run = nullptr;
    Register* out = nullptr;
    std::vector<Register*> arguments;
    Type type = Type::Unknown;  ///< of the result; of the value asked for, in checks
    NullRule nulls = NullRule::Aware;
    Operator op = Operator::None;
    bool isFirst = false;             ///< And, Or: the first condition of the chain
    bool exitOn = false;              ///< And, Or: the truth that ends the chain
    std::size_t exit = 0;             ///< And, Or: where the program goes on then; 0: nowhere
    std::size_t field = 0;            ///< field steps: position in the layout
    const Node* node = nullptr;       ///< for the texts of faults, and for names
    const FieldTest* test = nullptr;  ///< field tests

    const Slot& argument(std::size_t index) const noexcept { return *arguments[index]; }
    std::size_t count() const noexcept { return arguments.size(); }
};

}  // namespace zu::expression
