#include <array>

#include "host/expression/Comparison.h"
#include "host/expression/FieldReader.h"
#include "host/expression/Operators.h"
#include "host/expression/functions/Functions.h"
#include "host/expression/functions/Widths.h"

namespace zu::expression {

namespace {

bool IsMissing(const Slot& value) noexcept {
    return value.isNull || value.isEmpty;
}

/// A value that comes from one of the arguments. Blank fields keep that they are blank.
void PassOn(const Instruction& step, const Slot& value) {
    step.out->SetSlot(value);
    if (value.isNull && value.type == Type::Unknown) step.out->type = step.type;
}

void IsNull(const Instruction& step, const Machine&) {
    step.out->SetBoolean(IsMissing(step.argument(0)));
}

void Nvl(const Instruction& step, const Machine&) {
    PassOn(step, IsMissing(step.argument(0)) ? step.argument(1) : step.argument(0));
}

void Empty(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    if (value.isNull) return step.out->SetBoolean(value.isEmpty);
    switch (value.type) {
        case Type::Boolean:
            return step.out->SetBoolean(!value.boolean);
        case Type::Number:
            return step.out->SetBoolean(value.number == 0);
        case Type::Text:
            return step.out->SetBoolean(value.text.find_first_not_of(std::string_view(" \t\r\n\0", 5)) ==
                                        std::string_view::npos);
        default:
            return step.out->SetBoolean(false);
    }
}

void IsBlank(const Instruction& step, const Machine& machine) {
    const Node& argument = *step.node->children[0];
    if (argument.kind == NodeKind::Field) {
        return step.out->SetBoolean(IsBlankField(*machine.layout, argument.field, machine.row, *step.out));
    }
    const Slot& value = step.argument(0);
    const bool isBlankText = value.type == Type::Text && !value.isNull && WithoutPadding(value.text).empty();
    step.out->SetBoolean(isBlankText || value.isEmpty);
}

bool IsTrue(const Slot& condition) noexcept {
    return !condition.isNull && condition.boolean;
}

void IIf(const Instruction& step, const Machine&) {
    PassOn(step, step.argument(IsTrue(step.argument(0)) ? 1 : 2));
}

void ICase(const Instruction& step, const Machine&) {
    std::size_t i = 0;
    for (; i + 1 < step.count(); i += 2) {
        const Slot& condition = step.argument(i);
        if (!condition.isNull && condition.type != Type::Boolean) FailType(step, "a logical", condition);
        if (IsTrue(condition)) return PassOn(step, step.argument(i + 1));
    }
    if (i < step.count()) return PassOn(step, step.argument(i));
    step.out->SetNull(step.type);
}

/// NULL when either bound leaves it open, as `low <= x AND x <= high` does.
void Between(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    bool isOpen = false;
    for (std::size_t bound = 1; bound <= 2; ++bound) {
        const Slot& limit = step.argument(bound);
        if (value.isNull || limit.isNull) {
            isOpen = true;
            continue;
        }
        RequireComparable(step, value, limit);
        const int order = CompareSlots(value, limit);
        if (bound == 1 ? order < 0 : order > 0) return step.out->SetBoolean(false);
    }
    isOpen ? step.out->SetNull(Type::Boolean) : step.out->SetBoolean(true);
}

/// NULL when nothing is equal and a NULL is among the values, as the comparisons joined by OR are.
void InList(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    bool isOpen = value.isNull;
    for (std::size_t i = 1; i < step.count() && !value.isNull; ++i) {
        const Slot& candidate = step.argument(i);
        if (candidate.isNull) {
            isOpen = true;
            continue;
        }
        RequireComparable(step, value, candidate);
        if (CompareSlots(value, candidate) != 0 || step.node->children[i]->isForeign) continue;
        return step.out->SetBoolean(true);
    }
    isOpen ? step.out->SetNull(Type::Boolean) : step.out->SetBoolean(false);
}

void RecNo(const Instruction& step, const Machine& machine) {
    step.out->SetNumber(machine.row.number);
}

void Deleted(const Instruction& step, const Machine& machine) {
    step.out->SetBoolean(machine.row.record != nullptr && machine.row.record[0] == std::byte{'*'});
}

constexpr NullRule kAware = NullRule::Aware;

constexpr std::array kFunctions{
    Function{"ISNULL", "X", 'B', kAware, nullptr, IsNull},
    Function{"NVL", "XX", 'U', kAware, widths::Widest, Nvl},
    Function{"EMPTY", "X", 'B', kAware, nullptr, Empty},
    Function{"ISBLANK", "X", 'B', kAware, nullptr, IsBlank},
    Function{"IIF", "BXX", 'U', kAware, widths::Widest, IIf, false, "IF"},
    Function{"ICASE", "XXx*", 'C', kAware, widths::Widest, ICase},
    Function{"BETWEEN", "XXX", 'B', kAware, nullptr, Between},
    Function{"INLIST", "XX*", 'B', kAware, nullptr, InList},
    Function{"RECNO", "", 'N', kAware, nullptr, RecNo, true},
    Function{"DELETED", "", 'B', kAware, nullptr, Deleted, true},
};

}  // namespace

std::span<const Function> LogicFunctions() {
    return kFunctions;
}

}  // namespace zu::expression
