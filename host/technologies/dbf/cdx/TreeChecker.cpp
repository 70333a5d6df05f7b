#include "host/technologies/dbf/cdx/TreeChecker.h"

#include <cstring>
#include <string>

#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

void TreeChecker::Check(std::uint32_t root) {
    CheckPage(root, 0);
    CheckLinks();
}

std::optional<CheckedEntry> TreeChecker::CheckPage(std::uint32_t offset, std::size_t level) {
    if (level >= kMaxDepth) {
        findings_.Fault(offset, "the tree is deeper than " + std::to_string(kMaxDepth) + " levels");
        return std::nullopt;
    }
    if (!use_.Take(offset)) {
        findings_.Fault(offset, "no page of the file, or one that is used already");
        return std::nullopt;
    }
    try {
        const PageBytes bytes = file_.Page(offset);
        const PageHeader header = PageHeader::Parse(bytes, offset);
        if (levels_.size() <= level) levels_.resize(level + 1);
        levels_[level].push_back({offset, header});
        if (header.isRoot() != (level == 0)) {
            findings_.Fault(offset, level == 0 ? "the root page is not marked as root"
                                               : "a page below the root is marked as root");
        }
        if (!header.isLeaf()) return CheckInterior(bytes, offset, level);
        if (leafLevel_.value_or(level) != level) {
            findings_.Fault(offset, "a leaf on level " + std::to_string(level + 1) + ", others on level " +
                                        std::to_string(*leafLevel_ + 1));
        }
        leafLevel_ = leafLevel_.value_or(level);
        return CheckLeaf(bytes, offset);
    } catch (const Error& error) {
        if (error.kind() != ErrorKind::Damaged) throw;
        findings_.Fault(offset, error.what());
        return std::nullopt;
    }
}

std::optional<CheckedEntry> TreeChecker::CheckLeaf(PageBytes bytes, std::uint32_t offset) {
    leaf_.Unpack(bytes, offset, shape_);
    const LeafLayout& layout = leaf_.layout();
    if (layout.recordBits + 2 * layout.countBits != 8 * layout.entrySize) {
        findings_.Fault(offset, "the bit fields do not fill the entries");
    }
    if (leaf_.statedFree() != leaf_.countedFree()) {
        findings_.Fault(offset, "states " + std::to_string(leaf_.statedFree()) + " free bytes, has " +
                                    std::to_string(leaf_.countedFree()));
    }
    if (leaf_.firstDuplicate() != 0) {
        findings_.Fault(offset, "the first key leaves out bytes of a key before it");
    }
    for (std::size_t i = 0; i < leaf_.size(); ++i) {
        const std::byte* key = leaf_.key(i);
        const std::uint32_t record = leaf_.record(i);
        if (last_ && CompareEntries(last_->key.data(), last_->record, key, record, shape_.length) >= 0) {
            findings_.Fault(offset, "the key of record " + std::to_string(record) +
                                        " is not behind that of record " + std::to_string(last_->record) +
                                        " (not in byte order)");
        }
        if (!last_) last_.emplace();
        last_->key.assign(key, key + shape_.length);
        last_->record = record;
        take_(key, record, offset);
    }
    return leaf_.size() > 0 ? last_ : std::nullopt;
}

std::optional<CheckedEntry> TreeChecker::CheckInterior(PageBytes bytes, std::uint32_t offset,
                                                       std::size_t level) {
    // Reading the children may drop the page from memory: its entries are copied first.
    const InteriorPage page(bytes, offset, shape_);
    std::vector<CheckedEntry> separators(page.size());
    std::vector<std::uint32_t> children(page.size());
    for (std::size_t i = 0; i < page.size(); ++i) {
        separators[i].key.assign(page.key(i), page.key(i) + shape_.length);
        separators[i].record = page.record(i);
        children[i] = page.child(i);
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
        const std::optional<CheckedEntry> last = CheckPage(children[i], level + 1);
        if (last && (last->key != separators[i].key || last->record != separators[i].record)) {
            findings_.Fault(offset, "entry " + std::to_string(i + 1) + " (record " +
                                        std::to_string(separators[i].record) +
                                        ") does not repeat the last key below it (record " +
                                        std::to_string(last->record) + ")");
        }
    }
    return separators.back();
}

void TreeChecker::CheckLinks() {
    for (const std::vector<Place>& level : levels_) {
        for (std::size_t i = 0; i < level.size(); ++i) {
            const std::uint32_t left = i == 0 ? kNoPage : level[i - 1].offset;
            const std::uint32_t right = i + 1 == level.size() ? kNoPage : level[i + 1].offset;
            if (level[i].header.left == left && level[i].header.right == right) continue;
            findings_.Fault(level[i].offset, "the links to the pages beside it lead to " +
                                                 std::to_string(level[i].header.left) + " and " +
                                                 std::to_string(level[i].header.right) + ", expected " +
                                                 std::to_string(left) + " and " + std::to_string(right));
        }
    }
}

}  // namespace zu::dbf::cdx
