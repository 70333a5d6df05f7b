#pragma once

#include <map>
#include <unordered_map>

#include "portable/grid/Cell.h"
#include "portable/grid/LoadedRow.h"

namespace zu::grid {

/// The rows of a grid: how many there are, the record index that each carries (its row data), and the texts
/// of those that were loaded. A million rows that nobody has looked at cost nothing: a row's data is its
/// number less the header rows unless it was given another one.
class GridRows {
public:
    /// Header rows and one row a record, none of them loaded.
    void Reset(Row records);

    Row count() const noexcept { return count_; }
    bool Contains(Row row) const noexcept { return row >= 0 && row < count_; }
    bool IsDataRow(Row row) const noexcept { return row >= kHeaderRows && row < count_; }

    /// The record index of a row; header rows carry negative ones.
    Row RowData(Row row) const;
    void SetRowData(Row row, Row data);

    /// A row at the end with this record index; answers its number.
    Row Append(Row data);
    /// Takes the last row away.
    void RemoveLast();
    /// Takes out the row of a record that has left the view: the rows below it move up, record indexes above
    /// the removed one become one less, and every row from `row` on must be loaded again.
    void Remove(Row row);

    /// The texts of a row; null until it is loaded.
    const LoadedRow* Loaded(Row row) const;
    void Load(Row row, LoadedRow texts);
    /// Changes one text, or the mark of deletion, of a row that is loaded.
    void SetText(Cell cell, std::u16string_view text);
    void SetDeleted(Row row, bool deleted);
    /// The row is read again when it is next looked at.
    void ClearMark(Row row) { loaded_.erase(row); }
    std::size_t loadedCount() const noexcept { return loaded_.size(); }

private:
    static Row Usual(Row row) noexcept { return row - kHeaderRows; }

    Row count_ = kHeaderRows;
    std::map<Row, Row> unusual_;  ///< row data of rows that do not carry the usual one
    std::unordered_map<Row, LoadedRow> loaded_;
};

}  // namespace zu::grid
