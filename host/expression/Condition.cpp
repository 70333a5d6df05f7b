#include "host/expression/Condition.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "host/expression/Comparison.h"
#include "portable/error/Error.h"

namespace zu::expression {

namespace {

bool IsTrue(const Slot& value) {
    if (value.isNull) return false;
    if (value.type != Type::Boolean) {
        throw Error(ErrorKind::TypeMismatch,
                    "expected a condition that is true or false, found one that gives " +
                        std::string(TypeName(value.type)));
    }
    return value.boolean;
}

}  // namespace

Condition::Condition(const Node& root, Compiler& compiler) {
    AddTerm(root, compiler);
    std::stable_sort(tests_.begin(), tests_.end(),
                     [](const auto& a, const auto& b) { return a->cost() < b->cost(); });
}

void Condition::AddTerm(const Node& node, Compiler& compiler) {
    if (node.kind == NodeKind::And) {
        for (const NodePtr& child : node.children)
            AddTerm(*child, compiler);
        return;
    }
    if (std::unique_ptr<FieldTest> test = compiler.MakeFieldTest(node)) {
        tests_.push_back(std::move(test));
    } else {
        rest_.push_back(compiler.Compile(node));
    }
}

bool Condition::Test(const Machine& machine) const {
    for (const auto& test : tests_) {
        if (test->Test(machine.row.record) != Truth::True) return false;
    }
    return std::all_of(rest_.begin(), rest_.end(),
                       [&](const Code& code) { return IsTrue(code.Run(machine)); });
}

std::size_t Condition::Select(const Batch& batch, Machine& machine, bool includeDeleted,
                              std::uint16_t* selection) const {
    std::size_t count = 0;
    if (tests_.empty()) {
        const std::byte* mark = batch.first;
        for (std::size_t i = 0; i < batch.count; ++i, mark += batch.stride) {
            selection[count] = static_cast<std::uint16_t>(i);
            count += includeDeleted || *mark != std::byte{'*'} ? 1 : 0;
        }
    } else {
        count = tests_.front()->Begin(batch.first, batch.stride, batch.count, includeDeleted, selection);
    }
    for (std::size_t test = 1; test < tests_.size() && count != 0; ++test) {
        count = tests_[test]->Narrow(batch.first, batch.stride, selection, count);
    }
    for (const Code& code : rest_) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint16_t position = selection[i];
            machine.row.record = batch.first + position * batch.stride;
            machine.row.number = batch.firstNumber + position;
            selection[kept] = position;
            kept += IsTrue(code.Run(machine)) ? 1 : 0;
        }
        count = kept;
    }
    return count;
}

template <class Take>
void Condition::ForEachBatch(const RecordRun& run, Machine& machine, bool includeDeleted, Take take) const {
    std::array<std::uint16_t, kBatch> selection;
    machine.row.memos = run.memos;
    for (std::size_t done = 0; done < run.count; done += kBatch) {
        const Batch batch{run.first + done * run.stride, run.stride,
                          run.firstNumber + static_cast<std::uint32_t>(done),
                          std::min(kBatch, run.count - done)};
        const std::size_t count = Select(batch, machine, includeDeleted, selection.data());
        if (!take(batch, selection.data(), count)) return;
    }
}

void Condition::Filter(const RecordRun& run, Machine machine, bool includeDeleted, std::size_t limit,
                       std::vector<std::uint32_t>& matches) const {
    if (limit != 0 && matches.size() >= limit) return;
    ForEachBatch(run, machine, includeDeleted,
                 [&](const Batch& batch, const std::uint16_t* selection, std::size_t count) {
                     if (limit != 0) count = std::min(count, limit - matches.size());
                     for (std::size_t i = 0; i < count; ++i)
                         matches.push_back(batch.firstNumber + selection[i]);
                     return limit == 0 || matches.size() < limit;
                 });
}

std::uint64_t Condition::Count(const RecordRun& run, Machine machine, bool includeDeleted) const {
    std::uint64_t total = 0;
    ForEachBatch(run, machine, includeDeleted,
                 [&total](const Batch&, const std::uint16_t*, std::size_t count) {
                     total += count;
                     return true;
                 });
    return total;
}

}  // namespace zu::expression
