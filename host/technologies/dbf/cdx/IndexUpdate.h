#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/dbf/cdx/CdxFile.h"
#include "host/technologies/dbf/cdx/ChangedPages.h"
#include "host/technologies/dbf/cdx/NewKeys.h"
#include "host/technologies/dbf/cdx/OpenTag.h"
#include "host/technologies/dbf/transaction/ChangeSet.h"

namespace zu::dbf::cdx {

/// What is to be done about tags that cannot be kept up to date.
enum class StaleTags {
    Refuse,  ///< nothing is written to the table
    Allow    ///< they are left behind; they must be rebuilt before they are used again
};

/// The share that one change of records has in the index: takes out the keys that the records had and puts in
/// the ones that they will have, in every tag. The writes go into a change set; the file stays as it is.
///
/// The caller holds the index lock, and `file` and the tags are as the file is now.
class IndexUpdate {
public:
    /// Unsupported, naming the tag and the reason, when one of the tags cannot be kept up to date and that is
    /// not allowed.
    IndexUpdate(CdxFile& file, const std::vector<std::unique_ptr<OpenTag>>& tags,
                const std::string& tableName, StaleTags staleTags, transaction::ChangeSet& changes);

    /// The same refusal without an update.
    static void RequireUpdatable(const std::vector<std::unique_ptr<OpenTag>>& tags,
                                 const std::string& tableName, StaleTags staleTags);

    /// Puts in the keys of new records, tag by tag in their order. Tags that refuse equal keys are not looked
    /// at for them. Damaged when a tag has an entry of one of the records already.
    void Add(NewKeys& keys);

    /// The record is `after` where it was `before` (null: it is new). AlreadyExists when a candidate tag
    /// holds the new key for another record; Damaged when a tag does not hold what it must. The change set is
    /// then to be thrown away.
    void Replace(const expression::Row* before, const expression::Row& after);

    /// To be called once, after the last Replace.
    void Finish();

private:
    void ReplaceIn(OpenTag& tag, const expression::Row* before, const expression::Row& after);

    const std::vector<std::unique_ptr<OpenTag>>& tags_;
    const std::string& tableName_;
    ChangedPages pages_;
    bool changed_ = false;
    std::vector<std::byte> oldKey_;
    std::vector<std::byte> newKey_;
};

}  // namespace zu::dbf::cdx
