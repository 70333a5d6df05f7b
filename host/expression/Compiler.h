#pragma once

#include <deque>
#include <memory>
#include <vector>

#include "host/expression/FieldTest.h"
#include "host/expression/Instruction.h"

namespace zu::expression {

/// Steps that compute one value.
class Code {
public:
    /// Runs the steps. The answer is valid until the next run of any code with the same registers.
    const Slot& Run(const Machine& machine) const;

    std::vector<Instruction> steps;
    const Register* result = nullptr;
};

/// Turns bound trees into code. Keeps the registers and field tests that the code works with, so it lives as
/// long as the code. Constant parts are computed here, once.
class Compiler {
public:
    /// `machine` has the layout and the code page.
    explicit Compiler(const Machine& machine) : machine_(machine) {}
    Compiler(const Compiler&) = delete;
    Compiler& operator=(const Compiler&) = delete;

    /// The tree must stay as it is as long as the code is used.
    Code Compile(const Node& root);

    /// The test on stored bytes that `node` as a condition amounts to; null when it is something else.
    std::unique_ptr<FieldTest> MakeFieldTest(const Node& node);

    /// The value of a constant tree.
    const Slot& Evaluate(const Node& constant);

private:
    Register* Emit(const Node& node, Code& code);
    Register* EmitOperator(const Node& node, Code& code);
    Register* EmitComparison(const Node& node, Code& code);
    Register* EmitArithmetic(const Node& node, Code& code);
    Register* EmitChain(const Node& node, Code& code);
    Register* EmitCall(const Node& node, Code& code);
    Register* EmitChecked(const Node& node, Type type, Code& code);
    Register* EmitLiteral(const Node& node);
    Register* Append(Instruction step, Code& code);

    Register* NewRegister();

    Machine machine_;
    std::deque<Register> registers_;  // addresses stay
    std::vector<std::unique_ptr<FieldTest>> tests_;
};

}  // namespace zu::expression
