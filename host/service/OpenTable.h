#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/service/ViewShape.h"
#include "host/technologies/Table.h"

namespace zu::host {

/// What there is to say about an index of an open table, for callers.
struct IndexFacts {
    technologies::IndexDescription description;
    std::vector<std::wstring> partNames;
};

/// A table that is open, with what the objects that stand for it have in common: a script that looks
/// something up record by record has new objects made each time. One thread at a time.
class OpenTable {
public:
    /// `table` must outlive this object.
    explicit OpenTable(technologies::Table& table) : table_(table), shape_(ViewShape::Of(table)) {}

    technologies::Table& table() const noexcept { return table_; }
    /// All fields.
    const std::shared_ptr<const ViewShape>& shape() const noexcept { return shape_; }
    /// An index as it is described now; std::out_of_range when the table has no such index.
    const std::shared_ptr<const IndexFacts>& Index(std::size_t index);

private:
    technologies::Table& table_;
    std::shared_ptr<const ViewShape> shape_;
    std::vector<std::shared_ptr<const IndexFacts>> indexes_;
};

}  // namespace zu::host
