#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/dbf/cdx/FindingList.h"
#include "host/technologies/dbf/cdx/IndexContext.h"
#include "host/technologies/dbf/cdx/KeyEncoder.h"
#include "host/technologies/dbf/cdx/TagHeader.h"

namespace zu::dbf::cdx {

/// Compares the entries of a tag with the records of its table.
class KeyChecker {
public:
    /// Errors of expressions that do not compile come through.
    KeyChecker(const TagHeader& header, const IndexContext& context, FindingList& findings);

    KeyShape shape() const noexcept { return encoder_->form().shape(); }

    /// Takes the entries in the order of the tree.
    void Take(const std::byte* key, std::uint32_t record, std::uint32_t page);
    /// Looks for records that should have been there; `root` is where findings about the whole tree are put.
    void Finish(std::uint32_t root);

private:
    bool Belongs(const expression::Row& row) const { return !filter_ || filter_->Test(row); }
    expression::Row RowOf(std::uint32_t record) const;
    void CheckOrderOfEqualKeys(const std::byte* key, std::uint32_t record, std::uint32_t page);
    void CheckKey(const std::byte* key, const expression::Row& row, std::uint32_t page);
    bool IsAmongUniqueKeys(const expression::Row& row);

    const TagHeader& header_;
    const IndexContext& context_;
    FindingList& findings_;
    expression::Program key_;
    std::optional<expression::Program> filter_;
    std::vector<KeyForm> forms_;  ///< that the keys may have; the first entry that tells leaves one
    std::optional<KeyEncoder> encoder_;
    std::uint32_t count_;
    std::vector<bool> seen_;
    std::vector<std::byte> previous_;
    std::uint32_t previousRecord_ = 0;
    std::vector<std::byte> expected_;
    std::vector<std::byte> allKeys_;  ///< of a UNIQUE tag, one behind the other in order
};

}  // namespace zu::dbf::cdx
