#include "host/technologies/dbf/cdx/IndexUpdate.h"

#include "host/technologies/dbf/cdx/TreeEditor.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {
namespace {

std::string NameOf(const OpenTag& tag, const std::string& tableName) {
    return "index \"" + tag.description().name + "\" of table \"" + tableName + "\"";
}

bool HasKey(const OpenTag& tag, const expression::Row& row) {
    return tag.filter() == nullptr || tag.filter()->Test(row);
}

}  // namespace

IndexUpdate::IndexUpdate(CdxFile& file, const std::vector<std::unique_ptr<OpenTag>>& tags,
                         const std::string& tableName, StaleTags staleTags, transaction::ChangeSet& changes)
    : tags_(tags), tableName_(tableName), pages_(file, changes) {
    RequireUpdatable(tags, tableName, staleTags);
}

void IndexUpdate::RequireUpdatable(const std::vector<std::unique_ptr<OpenTag>>& tags,
                                   const std::string& tableName, StaleTags staleTags) {
    if (staleTags == StaleTags::Allow) return;
    for (const auto& tag : tags) {
        if (tag->isUsable()) continue;
        throw Error(ErrorKind::Unsupported,
                    "nothing is written to table \"" + tableName + "\" because the " +
                        NameOf(*tag, tableName) +
                        " could not be kept up to date: " + tag->description().reason +
                        ". Rebuild the index, or allow stale indexes in the settings");
    }
}

void IndexUpdate::Add(NewKeys& keys) {
    for (std::size_t i = 0; i < tags_.size(); ++i) {
        KeySorter& sorted = keys.keys(i);
        if (sorted.size() == 0) continue;
        changed_ = true;
        sorted.Sort();
        TreeEditor tree(pages_, tags_[i]->encoder().form().shape(), tags_[i]->header().root);
        try {
            if (!tags_[i]->description().unique) {
                for (std::size_t from = 0; from < sorted.size();)
                    from += tree.InsertSorted(sorted, from);
                continue;
            }
            for (std::size_t at = 0; at < sorted.size(); ++at)
                if (!tree.Find(sorted.key(at))) tree.Insert(sorted.key(at), sorted.record(at));
        } catch (const Error& error) {
            if (error.kind() != ErrorKind::Damaged) throw;
            throw Error(ErrorKind::Damaged, NameOf(*tags_[i], tableName_) + " is not up to date: " +
                                                error.what() + ". Rebuild the index");
        }
    }
}

void IndexUpdate::Replace(const expression::Row* before, const expression::Row& after) {
    for (const auto& tag : tags_)
        if (tag->isUsable()) ReplaceIn(*tag, before, after);
}

void IndexUpdate::ReplaceIn(OpenTag& tag, const expression::Row* before, const expression::Row& after) {
    const std::size_t length = tag.encoder().form().length();
    const bool had = before != nullptr && HasKey(tag, *before);
    const bool has = HasKey(tag, after);
    oldKey_.resize(length);
    newKey_.resize(length);
    if (had) tag.encoder().Encode(*before, oldKey_.data());
    if (has) tag.encoder().Encode(after, newKey_.data());
    if (had == has && (!had || oldKey_ == newKey_)) return;

    TreeEditor tree(pages_, tag.encoder().form().shape(), tag.header().root);
    const bool unique = tag.description().unique;
    const auto fail = [&](const char* text) {
        throw Error(ErrorKind::Damaged, NameOf(tag, tableName_) + " is not up to date: it " + text +
                                            " record " + std::to_string(after.number) +
                                            ". Rebuild the index");
    };
    if (had) {
        // A unique tag holds only the first record of equal keys; others leave no trace in it.
        if (!tree.Remove(oldKey_.data(), after.number) && !unique) fail("lacks the key of");
    }
    if (has) {
        if (unique || tag.description().candidate) {
            const auto holder = tree.Find(newKey_.data());
            if (holder && unique) {
                changed_ = true;
                return;
            }
            if (holder)
                throw Error(ErrorKind::AlreadyExists, "record " + std::to_string(*holder) + " of table \"" +
                                                          tableName_ +
                                                          "\" has the same key already, which its index \"" +
                                                          tag.description().name + "\" does not allow");
        }
        if (!tree.Insert(newKey_.data(), after.number)) fail("already has the new key of");
    }
    changed_ = true;
}

void IndexUpdate::Finish() {
    if (changed_) pages_.CountChange();
    changed_ = false;
}

}  // namespace zu::dbf::cdx
