#pragma once

#include <windows.h>

#include <oleauto.h>

#include <vector>

namespace zu::component {

/// How far a copy got. Rows are counted from 1.
class CopyOutcome {
public:
    /// Failed rows are only listed for a caller who wants the list.
    explicit CopyOutcome(bool listsFailures) noexcept : listsFailures_(listsFailures) {}

    void BeginRow() noexcept { ++rows_; }
    /// The end of the row begun last.
    void EndRow(bool added);
    /// The `count` rows that were added last failed after all.
    void TakeBack(LONG count);

    LONG rows() const noexcept { return rows_; }
    LONG added() const noexcept { return added_; }

    /// Writes the three optional outputs, each only if the caller supplied it: rows visited, rows added, and
    /// the numbers of the failed rows as an array of texts, or Empty when there are none.
    void Write(VARIANT* rowCount, VARIANT* addedCount, VARIANT* failedRowIndexes) const noexcept;

private:
    void Remember(LONG row);

    LONG rows_ = 0;
    LONG added_ = 0;
    bool listsFailures_;
    std::vector<LONG> failed_;
    std::vector<LONG> recent_;  ///< the rows added last, only kept for a caller who wants the failed ones
};

}  // namespace zu::component
