#include "host/technologies/dbf/write/TableBatch.h"

#include <exception>

namespace zu::dbf::write {

TableBatch::TableBatch(const EditedTable& table) : table_(table) {
    table_.batch->Begin();
}

TableBatch::~TableBatch() {
    try {
        Finish();
    } catch (...) {
        // What is left to do stands in the journal.
        static_cast<void>(std::current_exception());
    }
}

std::uint32_t TableBatch::AddRow(std::span<const textio::Cell> cells, std::span<const std::size_t> places,
                                 unsigned codePage) {
    return rows().Encode(cells, places, codePage) ? Add() : 0;
}

bool TableBatch::MatchStored(std::span<const textio::StoredField> stored,
                             std::span<const std::size_t> places) {
    return rows().MatchStored(stored, places);
}

std::uint32_t TableBatch::AddStored(const char* record) {
    return rows().EncodeStored(record) ? Add() : 0;
}

RowEncoder& TableBatch::rows() {
    if (!rows_) rows_ = std::make_unique<RowEncoder>(table_);
    return *rows_;
}

std::uint32_t TableBatch::Add() {
    std::uint32_t number = 0;
    table_.batch->Next(number);
    StoreMemos();
    table_.batch->Append(rows_->record());
    table_.records.Forget(number);
    return number;
}

void TableBatch::StoreMemos() {
    AppendBatch& batch = *table_.batch;
    for (const RowEncoder::Memo& memo : rows_->memos()) {
        const std::uint32_t block =
            memo.content.empty()
                ? 0
                : batch.memoUpdater().Store(memo.content, MemoContent::Text, 0, batch.memos());
        rows_->fields().SetMemoBlock(rows_->record().data(), memo.field, block);
    }
}

void TableBatch::Finish() {
    if (!isOpen_) return;
    isOpen_ = false;
    table_.batch->End();
}

}  // namespace zu::dbf::write
