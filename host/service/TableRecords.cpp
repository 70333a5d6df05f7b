#include "host/service/TableRecords.h"

#include <utility>

#include "com/Bstr.h"
#include "portable/text/Utf.h"

namespace zu::host {

TableRecords::TableRecords(std::shared_ptr<technologies::Table> table, std::vector<std::size_t> chosen,
                           std::vector<std::uint32_t> numbers)
    : table_(std::move(table)),
      chosen_(std::move(chosen)),
      numbers_(std::move(numbers)),
      tableName_(com::AsWide(text::ToUtf16(table_->name()))) {
    fields_.reserve(chosen_.size());
    for (const std::size_t position : chosen_)
        fields_.emplace_back(table_->fields().at(position));
}

void TableRecords::Read(std::size_t record, std::size_t field, technologies::Value& out) {
    table_->ReadValue(numbers_.at(record), chosen_.at(field), out);
}

bool TableRecords::IsDeleted(std::size_t record) {
    return table_->IsDeleted(numbers_.at(record));
}

}  // namespace zu::host
