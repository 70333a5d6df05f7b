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
    if (!rows_) rows_ = std::make_unique<RowEncoder>(table_);
    if (!rows_->Encode(cells, places, codePage)) return 0;
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
