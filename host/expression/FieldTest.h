#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "host/expression/Node.h"
#include "host/expression/RecordLayout.h"
#include "host/expression/Slot.h"

namespace zu::expression {

enum class Truth : std::uint8_t { False, True, Null };

/// A comparison of one field with constants that works on the stored bytes: the terms that most conditions
/// consist of. Numbers in digits are compared exactly, without a detour through doubles.
class FieldTest {
public:
    virtual ~FieldTest() = default;

    virtual Truth Test(const std::byte* record) const = 0;

    /// Puts the positions of those of `count` records (at most 65,536) into `selection` that are not marked
    /// deleted (or that may be) and for which the test is true; answers how many they are. Mark and field are
    /// looked at together: two passes would wait for the memory twice.
    virtual std::size_t Begin(const std::byte* first, std::size_t stride, std::size_t count,
                              bool includeDeleted, std::uint16_t* selection) const = 0;

    /// Keeps those of the `count` entries of `selection` (positions in a run of records) for which the test
    /// is true; answers how many are left.
    virtual std::size_t Narrow(const std::byte* first, std::size_t stride, std::uint16_t* selection,
                               std::size_t count) const = 0;

    /// What one test costs beside the others; cheap ones come first.
    int cost() const noexcept { return cost_; }

protected:
    explicit FieldTest(int cost) noexcept : cost_(cost) {}

private:
    int cost_;
};

/// A constant to compare a field with. `literal` is the node that it comes from when it is a plain literal:
/// it has the digits as written and knows of characters that the code page lacks.
struct Constant {
    const Slot& value;
    const Node* literal;
};

// Each of these answers null when the pair of storage and constant has no kernel.

/// field op constant
std::unique_ptr<FieldTest> MakeComparison(const RecordLayout& layout, std::size_t field, Operator op,
                                          const Constant& constant);
/// low <= field <= high
std::unique_ptr<FieldTest> MakeBetween(const RecordLayout& layout, std::size_t field, const Constant& low,
                                       const Constant& high);
/// the field's text begins with `prefix`, which has no blanks at its end
std::unique_ptr<FieldTest> MakePrefix(const RecordLayout& layout, std::size_t field, std::string_view prefix);
/// the logical field is `wanted`; one that is not initialised counts as false
std::unique_ptr<FieldTest> MakeLogical(const RecordLayout& layout, std::size_t field, bool wanted);

}  // namespace zu::expression
