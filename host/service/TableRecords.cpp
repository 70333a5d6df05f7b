#include "host/service/TableRecords.h"

#include <utility>

#include "host/service/DeletionMark.h"
#include "portable/error/Error.h"

namespace zu::host {

TableRecords::TableRecords(std::shared_ptr<technologies::Table> table, std::shared_ptr<const ViewShape> shape,
                           std::vector<std::uint32_t> numbers, Deleted deleted)
    : table_(std::move(table)), shape_(std::move(shape)), numbers_(std::move(numbers)), deleted_(deleted) {}

void TableRecords::Read(std::size_t record, std::size_t field, technologies::Value& out) {
    table_->ReadValue(numbers_.at(record), shape_->places.at(field), out);
}

bool TableRecords::ReadRow(std::size_t record, technologies::RowCells& out) {
    return table_->ReadRow(numbers_.at(record), shape_->places, out);
}

std::optional<std::vector<textio::StoredField>> TableRecords::StoredForm(unsigned codePage) {
    return table_->StoredForm(shape_->places, codePage);
}

std::size_t TableRecords::LocateRecords(std::size_t first, std::span<const char*> out) {
    return table_->LocateRecords(std::span(numbers_).subspan(first, out.size()), out.data());
}

std::unique_ptr<technologies::Batch> TableRecords::BeginBatch() {
    return table_->BeginBatch();
}

std::uint32_t TableRecords::AddRow(technologies::Batch& batch, std::span<const textio::Cell> cells,
                                   const unsigned long* fields, unsigned codePage) {
    const auto places = PlacesOf(fields, cells.size());
    return places ? batch.AddRow(cells, *places, codePage) : 0;
}

bool TableRecords::MatchStored(technologies::Batch& batch, std::span<const textio::StoredField> stored,
                               const unsigned long* fields) {
    const auto places = PlacesOf(fields, stored.size());
    return places && batch.MatchStored(stored, *places);
}

std::optional<std::span<const std::size_t>> TableRecords::PlacesOf(const unsigned long* fields,
                                                                   std::size_t count) {
    const std::vector<std::size_t>& places = shape_->places;
    if (!fields) {
        if (count > places.size()) return std::nullopt;
        return std::span<const std::size_t>(places).first(count);
    }
    places_.clear();
    for (std::size_t i = 0; i < count; ++i) {
        if (fields[i] >= places.size()) return std::nullopt;
        places_.push_back(places[fields[i]]);
    }
    return places_;
}

bool TableRecords::IsDeleted(std::size_t record) {
    return table_->IsDeleted(numbers_.at(record));
}

std::unique_ptr<technologies::RecordEdit> TableRecords::BeginEdit(std::size_t record) {
    return table_->EditRecord(numbers_.at(record));
}

std::unique_ptr<technologies::RecordEdit> TableRecords::BeginNew() {
    if (!isUpdateable()) RefuseChange("add a record");
    return table_->NewRecord();
}

void TableRecords::Join(std::uint32_t number, bool deleted) {
    if (deleted && deleted_ == Deleted::Leave) return;
    numbers_.push_back(number);
    TellJoined();
}

/// The last `count` records have been marked as deleted.
void TableRecords::LetLastGo(std::size_t count) {
    if (deleted_ == Deleted::Stay) return;
    for (; count > 0; --count) {
        numbers_.pop_back();
        TellLeft(numbers_.size());
    }
}

RecordSet::Deletion TableRecords::DeleteAll() {
    if (!isUpdateable()) return RecordSet::DeleteAll();
    const std::vector<std::uint32_t> fromTheLast(numbers_.rbegin(), numbers_.rend());
    technologies::MarkOutcome outcome;
    bool isWhole = false;
    try {
        isWhole = MarkRecords(*table_, L"delete", fromTheLast, true, outcome);
    } catch (...) {
        LetLastGo(outcome.handled);
        throw;
    }
    LetLastGo(outcome.handled);
    return {outcome.changed, isWhole};
}

bool TableRecords::SetDeleted(std::size_t record, bool deleted) {
    const std::uint32_t number = numbers_.at(record);
    if (!isUpdateable()) return RecordSet::SetDeleted(record, deleted);
    const bool changed = MarkRecord(*table_, number, deleted);
    if (deleted && deleted_ == Deleted::Leave) {
        numbers_.erase(numbers_.begin() + static_cast<std::ptrdiff_t>(record));
        TellLeft(record);
    }
    return changed;
}

}  // namespace zu::host
