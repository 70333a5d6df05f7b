#include "host/technologies/dbf/cdx/NewKeys.h"

namespace zu::dbf::cdx {

NewKeys::NewKeys(const std::vector<std::unique_ptr<OpenTag>>& tags) : tags_(tags) {
    keys_.reserve(tags.size());
    for (const auto& tag : tags)
        keys_.emplace_back(tag->isUsable() ? tag->encoder().form().length() : 1);
}

void NewKeys::Add(const expression::Row& row) {
    for (std::size_t i = 0; i < tags_.size(); ++i) {
        OpenTag& tag = *tags_[i];
        if (!tag.isUsable() || (tag.filter() != nullptr && !tag.filter()->Test(row))) continue;
        tag.encoder().Encode(row, keys_[i].Add(row.number));
    }
}

}  // namespace zu::dbf::cdx
