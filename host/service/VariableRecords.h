#pragma once

#include <memory>
#include <vector>

#include "host/service/RecordSet.h"

namespace zu::host {

/// Records that live in memory only: those of a record variable, or none at all for a view that shows a
/// layout. Every value is Null until it is written; a written value has the type and width of its field.
class VariableRecords final : public RecordSet {
public:
    VariableRecords(std::wstring tableName, ViewFields fields, std::size_t count);

    const std::wstring& tableName() const noexcept override { return tableName_; }
    const ViewFields& fields() const noexcept override { return fields_; }
    std::size_t Count() override { return values_.size(); }
    void Read(std::size_t record, std::size_t field, technologies::Value& out) override;
    std::uint32_t RecordNumber(std::size_t) override { return 0; }
    bool IsDeleted(std::size_t record) override { return deleted_.at(record); }
    bool isUpdateable() const noexcept override { return !values_.empty(); }
    void Write(std::size_t record, std::size_t field, const technologies::Value& value) override;
    bool keepsAtOnce() const noexcept override { return true; }
    std::unique_ptr<technologies::RecordEdit> BeginNew() override { return nullptr; }
    bool SetDeleted(std::size_t record, bool deleted) override;

    /// Takes all values away.
    void Reset();

private:
    std::wstring tableName_;
    ViewFields fields_;
    std::vector<std::vector<technologies::Value>> values_;
    std::vector<bool> deleted_;
};

}  // namespace zu::host
