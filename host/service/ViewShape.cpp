#include "host/service/ViewShape.h"

#include <numeric>
#include <utility>

#include "com/Bstr.h"
#include "portable/text/Utf.h"

namespace zu::host {

std::shared_ptr<const ViewShape> ViewShape::Of(const technologies::Table& table) {
    auto shape = std::make_shared<ViewShape>();
    shape->tableName = com::AsWide(text::ToUtf16(table.name()));
    shape->fields.reserve(table.fields().size());
    for (const technologies::FieldDescription& field : table.fields())
        shape->fields.emplace_back(field);
    shape->places.resize(shape->fields.size());
    std::iota(shape->places.begin(), shape->places.end(), std::size_t{0});
    return shape;
}

std::shared_ptr<const ViewShape> ViewShape::With(const std::vector<std::size_t>& chosen) const {
    auto shape = std::make_shared<ViewShape>();
    shape->tableName = tableName;
    shape->fields.reserve(chosen.size());
    shape->places.reserve(chosen.size());
    for (const std::size_t position : chosen) {
        shape->fields.push_back(fields.at(position));
        shape->places.push_back(places.at(position));
    }
    return shape;
}

}  // namespace zu::host
