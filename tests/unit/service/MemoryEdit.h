#pragma once

#include <cstdint>
#include <vector>

#include "MemoryTechnology.h"
#include "host/technologies/RecordEdit.h"

namespace zu::test {

/// An edit of a table in memory. Texts that are too long are refused as Overflow. What `data.onSave` does
/// happens in front of each saving; when it answers false the record is not saved.
class MemoryEdit final : public technologies::RecordEdit {
public:
    /// `record` 0: a new one.
    MemoryEdit(MemoryData& data, std::uint32_t record);

    std::uint32_t record() const noexcept override { return record_; }
    void Set(std::size_t field, const technologies::Value& value) override;
    void Get(std::size_t field, technologies::Value& out) override { out = values_.at(field); }
    bool isDeleted() const noexcept override { return deleted_; }
    void SetDeleted(bool deleted) override;
    bool isChanged() const noexcept override { return record_ == 0 || changed_ || marked_; }
    bool Save() override;

private:
    MemoryData& data_;
    std::uint32_t record_;
    std::vector<technologies::Value> values_;
    std::vector<bool> set_;
    bool deleted_ = false;
    bool changed_ = false;
    bool marked_ = false;
};

}  // namespace zu::test
