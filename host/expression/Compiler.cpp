#include "host/expression/Compiler.h"

#include <algorithm>
#include <utility>

#include "host/expression/Binder.h"
#include "host/expression/Comparison.h"
#include "host/expression/Function.h"
#include "host/expression/LikePattern.h"
#include "host/expression/Operators.h"

namespace zu::expression {

namespace {

bool IsEmptyDateLiteral(const Node& node) noexcept {
    return node.kind == NodeKind::Literal && node.type == Type::Date && node.date.isEmpty;
}

bool HasNull(const Instruction& step) noexcept {
    const bool takesEmpty = step.nulls == NullRule::TakesEmpty;
    return std::any_of(step.arguments.begin(), step.arguments.end(), [takesEmpty](const Register* argument) {
        return argument->isNull && !(takesEmpty && argument->isEmpty);
    });
}

void RunStep(const Instruction& step, const Machine& machine) {
    if (step.nulls != NullRule::Aware && HasNull(step)) return step.out->SetNull(step.type);
    step.run(step, machine);
}

bool EndsChain(const Instruction& step) noexcept {
    return step.exit != 0 && !step.out->isNull && step.out->boolean == step.exitOn;
}

Constant ConstantOf(const Node& node, const Slot& value) noexcept {
    return {value, node.kind == NodeKind::Literal ? &node : nullptr};
}

}  // namespace

const Slot& Code::Run(const Machine& machine) const {
    for (std::size_t i = 0; i < steps.size();) {
        const Instruction& step = steps[i];
        RunStep(step, machine);
        i = EndsChain(step) ? step.exit : i + 1;
    }
    return *result;
}

Code Compiler::Compile(const Node& root) {
    Code code;
    code.result = Emit(root, code);
    return code;
}

const Slot& Compiler::Evaluate(const Node& constant) {
    Code code;
    code.result = Emit(constant, code);
    return code.Run(machine_);
}

Register* Compiler::NewRegister() {
    return &registers_.emplace_back();
}

Register* Compiler::Append(Instruction step, Code& code) {
    step.out = NewRegister();
    const bool usesRecord = step.run == LoadField || step.run == LoadName || step.run == RunFieldTest ||
                            (step.node != nullptr && step.node->kind == NodeKind::Call &&
                             step.run == step.node->function->run && step.node->function->usesRow);
    const bool isConstant = !usesRecord && std::all_of(step.arguments.begin(), step.arguments.end(),
                                                       [](const Register* r) { return r->isConstant; });
    if (isConstant) {
        RunStep(step, machine_);
        step.out->isConstant = true;
        return step.out;
    }
    code.steps.push_back(std::move(step));
    return code.steps.back().out;
}

Register* Compiler::Emit(const Node& node, Code& code) {
    if (node.kind != NodeKind::Field && node.kind != NodeKind::Literal) {
        if (std::unique_ptr<FieldTest> test = MakeFieldTest(node)) {
            tests_.push_back(std::move(test));
            Instruction step;
            step.run = RunFieldTest;
            step.test = tests_.back().get();
            step.node = &node;
            return Append(std::move(step), code);
        }
    }
    return EmitOperator(node, code);
}

Register* Compiler::EmitOperator(const Node& node, Code& code) {
    Instruction step;
    step.node = &node;
    step.type = node.type;
    step.op = node.op;
    switch (node.kind) {
        case NodeKind::Literal:
            return EmitLiteral(node);
        case NodeKind::Field:
            step.run = LoadField;
            step.field = node.field;
            break;
        case NodeKind::Name:
            step.run = LoadName;
            break;
        case NodeKind::Negate:
            step.run = NegateNumber;
            step.nulls = NullRule::Strict;
            step.arguments = {EmitChecked(*node.children[0], Type::Number, code)};
            break;
        case NodeKind::Not:
            step.run = NotLogical;
            step.arguments = {EmitChecked(*node.children[0], Type::Boolean, code)};
            break;
        case NodeKind::Contains:
            step.run = ContainsText;
            step.nulls = NullRule::Strict;
            for (const NodePtr& child : node.children) {
                step.arguments.push_back(EmitChecked(*child, Type::Text, code));
            }
            break;
        case NodeKind::And:
        case NodeKind::Or:
            return EmitChain(node, code);
        case NodeKind::Compare:
            return EmitComparison(node, code);
        case NodeKind::Arithmetic:
            return EmitArithmetic(node, code);
        case NodeKind::Call:
            return EmitCall(node, code);
    }
    return Append(std::move(step), code);
}

Register* Compiler::EmitLiteral(const Node& node) {
    Register* out = NewRegister();
    switch (node.type) {
        case Type::Number:
            out->SetNumber(node.number);
            break;
        case Type::Text:
            out->SetText(node.bytes);
            break;
        case Type::Boolean:
            out->SetBoolean(node.boolean);
            break;
        case Type::Date:
            node.date.isEmpty ? out->SetEmpty(Type::Date) : out->SetDate(node.date.julianDay);
            break;
        case Type::DateTime:
            out->SetDateTime(node.date.julianDay, node.date.milliseconds);
            break;
        case Type::Unknown:
            out->SetNull(Type::Unknown);
            break;
    }
    out->isConstant = true;
    return out;
}

Register* Compiler::EmitChecked(const Node& node, Type type, Code& code) {
    Register* value = Emit(node, code);
    if (node.type != Type::Unknown || node.kind == NodeKind::Literal) return value;
    Instruction check;
    check.run = CheckType;
    check.type = type;
    check.node = &node;
    check.arguments = {value};
    return Append(std::move(check), code);
}

Register* Compiler::EmitComparison(const Node& node, Code& code) {
    Instruction step;
    step.node = &node;
    step.type = Type::Boolean;
    step.op = node.op;
    const Node& left = *node.children[0];
    const Node& right = *node.children[1];
    if (IsEmptyDateLiteral(right)) {
        step.run = CompareWithEmpty;
        step.arguments = {Emit(left, code)};
        return Append(std::move(step), code);
    }
    if (IsEmptyDateLiteral(left)) {
        step.run = CompareWithEmpty;
        step.op = Mirrored(node.op);
        step.arguments = {Emit(right, code)};
        return Append(std::move(step), code);
    }
    const bool isForeign = left.isForeign != right.isForeign;
    const bool isEquality = node.op == Operator::Equal || node.op == Operator::NotEqual;
    step.run = isForeign && isEquality ? CompareForeign : CompareAny;
    step.nulls = NullRule::Strict;
    step.arguments.push_back(Emit(left, code));
    step.arguments.push_back(Emit(right, code));
    return Append(std::move(step), code);
}

Register* Compiler::EmitArithmetic(const Node& node, Code& code) {
    Instruction step;
    step.node = &node;
    step.type = node.type;
    step.op = node.op;
    step.nulls = NullRule::Strict;
    const Node& left = *node.children[0];
    const Node& right = *node.children[1];
    const bool isSum = node.op == Operator::Add || node.op == Operator::Subtract;
    const bool areNumbers = left.type == Type::Number && right.type == Type::Number;
    const bool areTexts = left.type == Type::Text && right.type == Type::Text;
    if (isSum) {
        const bool isAdd = node.op == Operator::Add;
        if (areNumbers) {
            step.run = isAdd ? AddNumbers : SubtractNumbers;
        } else if (areTexts) {
            step.run = isAdd ? JoinTexts : JoinTextsTight;
        } else {
            step.run = isAdd ? AddAny : SubtractAny;
        }
        step.arguments.push_back(Emit(left, code));
        step.arguments.push_back(Emit(right, code));
        return Append(std::move(step), code);
    }
    switch (node.op) {
        case Operator::Multiply:
            step.run = MultiplyNumbers;
            break;
        case Operator::Divide:
            step.run = DivideNumbers;
            break;
        case Operator::Modulo:
            step.run = ModuloNumbers;
            break;
        default:
            step.run = PowerNumbers;
            break;
    }
    step.arguments.push_back(EmitChecked(left, Type::Number, code));
    step.arguments.push_back(EmitChecked(right, Type::Number, code));
    return Append(std::move(step), code);
}

Register* Compiler::EmitChain(const Node& node, Code& code) {
    const bool isAnd = node.kind == NodeKind::And;
    Register* out = NewRegister();
    std::vector<std::size_t> chain;
    for (const NodePtr& child : node.children) {
        Instruction step;
        step.run = isAnd ? AndLogical : OrLogical;
        step.node = &node;
        step.type = Type::Boolean;
        step.isFirst = chain.empty();
        step.exitOn = !isAnd;
        step.arguments = {EmitChecked(*child, Type::Boolean, code)};
        step.out = out;
        chain.push_back(code.steps.size());
        code.steps.push_back(std::move(step));
    }
    for (const std::size_t step : chain)
        code.steps[step].exit = code.steps.size();
    return out;
}

Register* Compiler::EmitCall(const Node& node, Code& code) {
    const Function& function = *node.function;
    Instruction step;
    step.node = &node;
    step.type = node.type;
    step.nulls = function.nulls;
    step.run = function.run;
    for (std::size_t i = 0; i < node.children.size(); ++i) {
        const Node& child = *node.children[i];
        switch (function.argumentLetter(i)) {
            case 'T':
                step.arguments.push_back(EmitChecked(child, Type::Text, code));
                break;
            case 'N':
                step.arguments.push_back(EmitChecked(child, Type::Number, code));
                break;
            case 'D':
                step.arguments.push_back(EmitChecked(child, Type::Date, code));
                break;
            case 'B':
                step.arguments.push_back(EmitChecked(child, Type::Boolean, code));
                break;
            default:
                step.arguments.push_back(Emit(child, code));
                break;
        }
    }
    return Append(std::move(step), code);
}

std::unique_ptr<FieldTest> Compiler::MakeFieldTest(const Node& node) {
    if (machine_.layout == nullptr) return nullptr;
    const RecordLayout& layout = *machine_.layout;
    if (node.kind == NodeKind::Field) return MakeLogical(layout, node.field, true);
    if (node.kind == NodeKind::Not) {
        const Node& inner = *node.children[0];
        return inner.kind == NodeKind::Field ? MakeLogical(layout, inner.field, false) : nullptr;
    }
    if (node.kind == NodeKind::Compare) {
        const Node& left = *node.children[0];
        const Node& right = *node.children[1];
        if (left.kind == NodeKind::Field && IsConstant(right)) {
            return MakeComparison(layout, left.field, node.op, ConstantOf(right, Evaluate(right)));
        }
        if (right.kind == NodeKind::Field && IsConstant(left)) {
            return MakeComparison(layout, right.field, Mirrored(node.op), ConstantOf(left, Evaluate(left)));
        }
        return nullptr;
    }
    if (node.kind != NodeKind::Call || node.children.empty() || node.children[0]->kind != NodeKind::Field) {
        return nullptr;
    }
    const std::size_t field = node.children[0]->field;
    if (node.function->name == "BETWEEN" && IsConstant(*node.children[1]) && IsConstant(*node.children[2])) {
        const Slot& low = Evaluate(*node.children[1]);
        const Slot& high = Evaluate(*node.children[2]);
        return MakeBetween(layout, field, ConstantOf(*node.children[1], low),
                           ConstantOf(*node.children[2], high));
    }
    if (node.function->name == "LIKE" && IsConstant(*node.children[1])) {
        const Slot& pattern = Evaluate(*node.children[1]);
        if (pattern.isNull || pattern.type != Type::Text) return nullptr;
        const auto prefix = PrefixOf(pattern.text);
        return prefix ? MakePrefix(layout, field, *prefix) : nullptr;
    }
    return nullptr;
}

}  // namespace zu::expression
