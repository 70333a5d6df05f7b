#include "portable/grid/GridRows.h"

#include <utility>

namespace zu::grid {

void GridRows::Reset(Row records) {
    count_ = kHeaderRows + (records > 0 ? records : 0);
    unusual_.clear();
    loaded_.clear();
}

Row GridRows::RowData(Row row) const {
    const auto found = unusual_.find(row);
    return found == unusual_.end() ? Usual(row) : found->second;
}

void GridRows::SetRowData(Row row, Row data) {
    if (data == Usual(row)) {
        unusual_.erase(row);
    } else {
        unusual_[row] = data;
    }
}

Row GridRows::Append(Row data) {
    const Row row = count_++;
    SetRowData(row, data);
    return row;
}

void GridRows::RemoveLast() {
    if (count_ <= kHeaderRows) return;
    --count_;
    unusual_.erase(count_);
    loaded_.erase(count_);
}

void GridRows::Remove(Row row) {
    if (!IsDataRow(row)) return;
    const Row removed = RowData(row);
    const auto lowered = [removed](Row data) { return data > removed ? data - 1 : data; };

    // Rows that carry the usual data stay usual when the removed record is the one before them in the usual
    // order; only the others need an entry.
    std::map<Row, Row> unusual;
    const auto keep = [&unusual](Row target, Row data) {
        if (data != Usual(target)) unusual[target] = data;
    };
    for (const auto& [source, data] : unusual_) {
        if (source != row) keep(source < row ? source : source - 1, lowered(data));
    }
    if (removed < Usual(row)) {
        for (Row source = kHeaderRows + removed + 1; source < row; ++source)
            if (!unusual_.contains(source)) keep(source, lowered(Usual(source)));
    } else if (removed > Usual(row)) {
        for (Row source = row + 1; source < count_ && Usual(source) <= removed; ++source)
            if (!unusual_.contains(source)) keep(source - 1, Usual(source));
    }
    unusual_ = std::move(unusual);
    --count_;
    std::erase_if(loaded_, [row](const auto& entry) { return entry.first >= row; });
}

const LoadedRow* GridRows::Loaded(Row row) const {
    const auto found = loaded_.find(row);
    return found == loaded_.end() ? nullptr : &found->second;
}

void GridRows::SetText(Cell cell, std::u16string_view text) {
    const auto found = loaded_.find(cell.row);
    if (found == loaded_.end() || cell.column < kFixedColumns) return;
    found->second.Replace(static_cast<std::size_t>(cell.column - kFixedColumns), text);
}

void GridRows::SetDeleted(Row row, bool deleted) {
    const auto found = loaded_.find(row);
    if (found != loaded_.end()) found->second.SetDeleted(deleted);
}

void GridRows::Load(Row row, LoadedRow texts) {
    loaded_.insert_or_assign(row, std::move(texts));
}

}  // namespace zu::grid
