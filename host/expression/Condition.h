#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/expression/Compiler.h"

namespace zu::expression {

/// A condition taken apart at its ANDs: terms that work on stored bytes, cheapest first, and code for the
/// rest, which only sees the records that the terms have left over.
class Condition {
public:
    /// `root` is a bound tree of type Boolean or unknown; it and `compiler` must outlive the condition.
    Condition(const Node& root, Compiler& compiler);

    /// `machine` has the record; its other parts are those of the compiler.
    bool Test(const Machine& machine) const;

    /// Records of `run` that meet the condition, in order; at most `limit` (0: all) numbers are appended.
    void Filter(const RecordRun& run, Machine machine, bool includeDeleted, std::size_t limit,
                std::vector<std::uint32_t>& matches) const;
    std::uint64_t Count(const RecordRun& run, Machine machine, bool includeDeleted) const;

private:
    /// Positions within a batch. A batch stays in the processor's caches while each term looks at it.
    static constexpr std::size_t kBatch = 256;
    struct Batch {
        const std::byte* first;
        std::size_t stride;
        std::uint32_t firstNumber;
        std::size_t count;
    };

    void AddTerm(const Node& node, Compiler& compiler);
    std::size_t Select(const Batch& batch, Machine& machine, bool includeDeleted,
                       std::uint16_t* selection) const;
    template <class Take>
    void ForEachBatch(const RecordRun& run, Machine& machine, bool includeDeleted, Take take) const;

    std::vector<std::unique_ptr<FieldTest>> tests_;
    std::vector<Code> rest_;
};

}  // namespace zu::expression
