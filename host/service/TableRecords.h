#pragma once

#include <memory>
#include <vector>

#include "host/service/RecordSet.h"
#include "host/service/ViewShape.h"
#include "host/technologies/Table.h"

namespace zu::host {

/// Records of a table by their numbers; values are read when they are asked for. Keeps the table open.
class TableRecords final : public RecordSet {
public:
    /// Whether records that are marked as deleted stay in the set.
    enum class Deleted { Leave, Stay };

    TableRecords(std::shared_ptr<technologies::Table> table, std::shared_ptr<const ViewShape> shape,
                 std::vector<std::uint32_t> numbers, Deleted deleted);

    const std::wstring& tableName() const noexcept override { return shape_->tableName; }
    const ViewFields& fields() const noexcept override { return shape_->fields; }
    std::size_t Count() override { return numbers_.size(); }
    void Read(std::size_t record, std::size_t field, technologies::Value& out) override;
    bool ReadRow(std::size_t record, technologies::RowCells& out) override;
    std::optional<std::vector<textio::StoredField>> StoredForm(unsigned codePage) override;
    std::size_t LocateRecords(std::size_t first, std::span<const char*> out) override;
    std::unique_ptr<technologies::Batch> BeginBatch() override;
    std::uint32_t AddRow(technologies::Batch& batch, std::span<const textio::Cell> cells,
                         const unsigned long* fields, unsigned codePage) override;
    bool MatchStored(technologies::Batch& batch, std::span<const textio::StoredField> stored,
                     const unsigned long* fields) override;
    std::uint32_t RecordNumber(std::size_t record) override { return numbers_.at(record); }
    bool IsDeleted(std::size_t record) override;

    bool isUpdateable() const noexcept override { return table_->isUpdateable(); }
    std::string WhyReadOnly() const override { return table_->WhyReadOnly(); }
    std::unique_ptr<technologies::RecordEdit> BeginEdit(std::size_t record) override;
    std::unique_ptr<technologies::RecordEdit> BeginNew() override;
    std::size_t PlaceInEdit(std::size_t field) const override { return shape_->places.at(field); }
    void Join(std::uint32_t number, bool deleted) override;
    bool SetDeleted(std::size_t record, bool deleted) override;
    Deletion DeleteAll() override;

private:
    /// The places in the table of `count` fields of the view. Nothing when there is no such field.
    std::optional<std::span<const std::size_t>> PlacesOf(const unsigned long* fields, std::size_t count);
    void LetLastGo(std::size_t count);

    std::shared_ptr<technologies::Table> table_;
    std::shared_ptr<const ViewShape> shape_;
    std::vector<std::size_t> places_;  ///< reused by PlacesOf
    std::vector<std::uint32_t> numbers_;
    Deleted deleted_;
};

}  // namespace zu::host
