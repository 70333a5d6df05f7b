#include "host/service/VariableRecords.h"

#include <algorithm>
#include <utility>

namespace zu::host {

VariableRecords::VariableRecords(std::wstring tableName, ViewFields fields, std::size_t count)
    : tableName_(std::move(tableName)),
      fields_(std::move(fields)),
      values_(count, std::vector<technologies::Value>(fields_.size())),
      deleted_(count, false) {}

void VariableRecords::Read(std::size_t record, std::size_t field, technologies::Value& out) {
    out = values_.at(record).at(field);
}

void VariableRecords::Write(std::size_t record, std::size_t field, const technologies::Value& value) {
    values_.at(record).at(field) = value;
}

bool VariableRecords::SetDeleted(std::size_t record, bool deleted) {
    const bool changed = deleted_.at(record) != deleted;
    deleted_.at(record) = deleted;
    return changed;
}

void VariableRecords::Reset() {
    for (auto& record : values_)
        std::fill(record.begin(), record.end(), technologies::Value());
    std::fill(deleted_.begin(), deleted_.end(), false);
}

}  // namespace zu::host
