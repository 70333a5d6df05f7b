#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/Table.h"
#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/IndexContext.h"
#include "host/technologies/dbf/cdx/KeyEncoder.h"
#include "host/technologies/dbf/cdx/KeyParts.h"
#include "host/technologies/dbf/cdx/TagCursor.h"
#include "host/technologies/dbf/cdx/TagDirectory.h"
#include "host/technologies/dbf/cdx/TagHeader.h"

namespace zu::dbf::cdx {

/// One tag of an open index: its header, its compiled expressions and what is known of its soundness.
class OpenTag {
public:
    /// Never fails for what the file holds: a tag that cannot be used says why in its description.
    OpenTag(CdxFile& file, const DirectoryEntry& entry, const IndexContext& context);
    OpenTag(const OpenTag&) = delete;
    OpenTag& operator=(const OpenTag&) = delete;

    const technologies::IndexDescription& description() const noexcept { return description_; }
    const TagHeader& header() const noexcept { return header_; }
    bool isUsable() const noexcept { return description_.usable; }
    /// Every record of the table has its own key.
    bool holdsAllRecords() const noexcept { return !description_.unique && description_.filter.empty(); }

    /// From here on the tag is not used any more.
    void Reject(const std::string& reason);

    /// For usable tags only.
    const expression::Program& key() const noexcept { return *key_; }
    /// Null when every record has a key.
    const expression::Program* filter() const noexcept { return filter_ ? &*filter_ : nullptr; }
    KeyEncoder& encoder() noexcept { return *encoder_; }
    const std::vector<PartForm>& parts() const noexcept { return parts_; }
    TagCursor MakeCursor() const { return TagCursor(file_, header_.root, encoder_->form().shape()); }
    LeafPath MakePath() const { return LeafPath(file_, header_.root, encoder_->form().shape()); }

private:
    void Load(const IndexContext& context, std::uint32_t offset);
    void ChooseForm(const IndexContext& context);

    CdxFile& file_;
    technologies::IndexDescription description_;
    TagHeader header_;
    std::optional<expression::Program> key_;
    std::optional<expression::Program> filter_;
    std::vector<PartForm> parts_;
    std::optional<KeyEncoder> encoder_;
};

}  // namespace zu::dbf::cdx
