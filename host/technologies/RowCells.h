#pragma once

#include <cstddef>
#include <deque>
#include <vector>

#include "host/technologies/Value.h"
#include "portable/textio/Cell.h"

namespace zu::technologies {

/// The values of some records one after the other, with the room for those that do not fit into a cell.
class RowCells {
public:
    /// Forgets the records; room is used again. `codePage`: texts of this page may stay bytes.
    void Begin(unsigned codePage) noexcept {
        codePage_ = codePage;
        cells_.clear();
        usedTexts_ = 0;
        usedDecimals_ = 0;
    }
    unsigned codePage() const noexcept { return codePage_; }

    void Add(const textio::Cell& cell) { cells_.push_back(cell); }
    /// Adds the cell for a value of a field of this type as the view interface shows it. False, and nothing
    /// is added, for values that have no such form.
    bool Add(const Value& value, FieldType type);

    const textio::Cell* cells() const noexcept { return cells_.data(); }
    std::size_t size() const noexcept { return cells_.size(); }
    /// Gives up the cells behind the first `size`.
    void Shrink(std::size_t size) { cells_.resize(size); }

    /// For reading values by the way.
    Value& scratch() noexcept { return scratch_; }

private:
    unsigned codePage_ = 0;
    std::vector<textio::Cell> cells_;
    std::deque<std::u16string> texts_;  // a deque: cells point into it while it grows
    std::size_t usedTexts_ = 0;
    std::deque<text::DecimalDigits> decimals_;
    std::size_t usedDecimals_ = 0;
    Value scratch_;
};

}  // namespace zu::technologies
