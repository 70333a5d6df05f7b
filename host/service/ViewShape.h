#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/service/ViewField.h"
#include "host/technologies/Table.h"

namespace zu::host {

/// What a view of a table shows: fields of the table in an order of its own. Views that show the same share
/// one.
struct ViewShape {
    std::wstring tableName;
    ViewFields fields;
    std::vector<std::size_t> places;  ///< where the fields are among those of the table

    /// All fields of the table.
    static std::shared_ptr<const ViewShape> Of(const technologies::Table& table);
    /// Only the fields at the positions `chosen`.
    std::shared_ptr<const ViewShape> With(const std::vector<std::size_t>& chosen) const;
};

}  // namespace zu::host
