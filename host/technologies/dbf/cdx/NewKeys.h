#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/dbf/cdx/KeySorter.h"
#include "host/technologies/dbf/cdx/OpenTag.h"

namespace zu::dbf::cdx {

/// The keys that new records have in every tag that can be used, gathered to be put in together.
class NewKeys {
public:
    /// The tags must outlive the object.
    explicit NewKeys(const std::vector<std::unique_ptr<OpenTag>>& tags);

    /// Takes the keys of a record. Records come in ascending order.
    void Add(const expression::Row& row);
    /// The keys of the tag with this position.
    KeySorter& keys(std::size_t tag) noexcept { return keys_[tag]; }

private:
    const std::vector<std::unique_ptr<OpenTag>>& tags_;
    std::vector<KeySorter> keys_;
};

}  // namespace zu::dbf::cdx
