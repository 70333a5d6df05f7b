#pragma once

#include <memory>

#include "host/technologies/Batch.h"
#include "host/technologies/dbf/write/AppendBatch.h"
#include "host/technologies/dbf/write/RowEncoder.h"

namespace zu::dbf::write {

/// The share that one caller has in the batch of a table.
class TableBatch final : public technologies::Batch {
public:
    /// Everything in `table`, which has a batch, must outlive the object.
    explicit TableBatch(const EditedTable& table);
    ~TableBatch() override;
    TableBatch(const TableBatch&) = delete;
    TableBatch& operator=(const TableBatch&) = delete;

    std::uint32_t AddRow(std::span<const textio::Cell> cells, std::span<const std::size_t> places,
                         unsigned codePage) override;
    bool MatchStored(std::span<const textio::StoredField> stored,
                     std::span<const std::size_t> places) override;
    std::uint32_t AddStored(const char* record) override;
    unsigned codePage() const noexcept override { return table_.layout.record.codePage->number(); }
    void Finish() override;
    std::uint32_t lost() const noexcept override { return table_.batch->lost(); }

private:
    RowEncoder& rows();
    /// Adds the record that the encoder has made.
    std::uint32_t Add();
    void StoreMemos();

    EditedTable table_;
    std::unique_ptr<RowEncoder> rows_;  ///< once it is needed
    bool isOpen_ = true;
};

}  // namespace zu::dbf::write
