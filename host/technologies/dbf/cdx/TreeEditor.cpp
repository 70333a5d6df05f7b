#include "host/technologies/dbf/cdx/TreeEditor.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "host/technologies/dbf/cdx/Damage.h"
#include "host/technologies/dbf/cdx/InteriorPage.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "host/technologies/dbf/cdx/LeafPacker.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {
namespace {

// Below this a leaf looks for a neighbour to join; a joined page keeps some room, so that the next insert
// does not split it at once.
constexpr std::size_t kJoinBelow = leaf::kRoom / 3;
constexpr std::size_t kJoinedRoom = leaf::kRoom * 7 / 8;

// Entries that are put into one leaf at once: what comes of it must fit into the memory of a page or two
// dozen.
constexpr std::size_t kLongestRun = 4096;

std::uint32_t GreatestRecord(const TreeEntries& entries) {
    std::uint32_t greatest = 0;
    for (std::size_t i = 0; i < entries.size(); ++i)
        greatest = std::max(greatest, entries.record(i));
    return greatest;
}

std::size_t LowerBound(const TreeEntries& entries, const std::byte* key, std::uint32_t record) {
    std::size_t low = 0;
    std::size_t high = entries.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (CompareEntries(entries.key(middle), entries.record(middle), key, record, entries.keyLength()) < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

bool IsEntry(const TreeEntries& entries, std::size_t index, const std::byte* key, std::uint32_t record) {
    return index < entries.size() && entries.record(index) == record &&
           std::memcmp(entries.key(index), key, entries.keyLength()) == 0;
}

// Ends of runs of at most `capacity` entries, all of about the same length.
std::vector<std::size_t> PlanInterior(std::size_t count, std::size_t capacity) {
    const std::size_t runs = (count + capacity - 1) / capacity;
    std::vector<std::size_t> ends;
    for (std::size_t i = 1; i <= runs; ++i)
        ends.push_back(count * i / runs);
    return ends;
}

}  // namespace

TreeEditor::TreeEditor(PageStore& pages, const KeyShape& shape, std::uint32_t root)
    : pages_(pages),
      shape_(shape),
      root_(root),
      capacity_(InteriorCapacity(shape.length)),
      entries_(shape.length),
      neighbour_(shape.length) {}

void TreeEditor::Descend(const std::byte* key, std::uint32_t record) {
    path_.clear();
    std::uint32_t offset = root_;
    for (;;) {
        const PageBytes bytes = pages_.Read(offset);
        if (PageHeader::Parse(bytes, offset).isLeaf()) break;
        if (path_.size() >= kMaxDepth) FailDamaged(offset, "the tree is deeper than any real one");
        const InteriorPage page(bytes, offset, shape_);
        const std::size_t index = std::min(page.LowerBound(key, record), page.size() - 1);
        path_.push_back({offset, index});
        offset = page.child(index);
    }
    leaf_ = offset;
}

PageHeader TreeEditor::LoadLeaf(std::uint32_t offset, TreeEntries& entries) {
    unpacked_.Unpack(pages_.Read(offset), offset, shape_);
    layout_ = unpacked_.layout();
    entries.Clear();
    for (std::size_t i = 0; i < unpacked_.size(); ++i)
        entries.Append(unpacked_.key(i), unpacked_.record(i));
    return unpacked_.header();
}

PageHeader TreeEditor::LoadInterior(std::uint32_t offset, TreeEntries& entries) {
    const InteriorPage page(pages_.Read(offset), offset, shape_);
    entries.Clear();
    for (std::size_t i = 0; i < page.size(); ++i)
        entries.Append(page.key(i), page.record(i), page.child(i));
    return page.header();
}

void TreeEditor::StoreLeaf(std::uint32_t offset, PageHeader header, const TreeEntries& entries,
                           std::size_t from, std::size_t to) {
    LeafPacker packer(shape_, layout_);
    for (std::size_t i = from; i < to; ++i)
        if (!packer.Add(entries.key(i), entries.record(i)))
            throw Error(ErrorKind::Internal, "the entries planned for an index page do not fit into it");
    std::array<std::byte, kPageSize> bytes{};
    packer.Store(header, bytes);
    pages_.Write(offset, bytes);
}

void TreeEditor::StoreInterior(std::uint32_t offset, PageHeader header, const TreeEntries& entries,
                               std::size_t from, std::size_t to) {
    InteriorPacker packer(shape_, capacity_);
    for (std::size_t i = from; i < to; ++i)
        if (!packer.Add(entries.key(i), entries.record(i), entries.child(i)))
            throw Error(ErrorKind::Internal, "the entries planned for an index page do not fit into it");
    std::array<std::byte, kPageSize> bytes{};
    packer.Store(header, bytes);
    pages_.Write(offset, bytes);
}

void TreeEditor::SetNeighbour(std::uint32_t page, std::uint32_t left, std::uint32_t right, bool setLeft) {
    if (page == kNoPage) return;
    std::array<std::byte, kPageSize> bytes{};
    const PageBytes old = pages_.Read(page);
    std::copy(old.begin(), old.end(), bytes.begin());
    PageHeader header = PageHeader::Parse(bytes, page);
    (setLeft ? header.left : header.right) = setLeft ? left : right;
    header.Store(bytes);
    pages_.Write(page, bytes);
}

template <class Store>
TreeEntries TreeEditor::Spread(std::uint32_t first, PageHeader header, const TreeEntries& entries,
                               const std::vector<std::size_t>& ends, bool isRoot, Store store) {
    // The root keeps its place for the level above: all of its content moves to new pages.
    std::vector<std::uint32_t> offsets;
    for (std::size_t i = 0; i < ends.size(); ++i)
        offsets.push_back(i == 0 && !isRoot ? first : pages_.Allocate());
    const std::uint32_t outerLeft = isRoot ? kNoPage : header.left;
    const std::uint32_t outerRight = isRoot ? kNoPage : header.right;
    header.attributes = static_cast<std::uint16_t>(header.attributes & ~kRootPage);
    TreeEntries above(shape_.length);
    for (std::size_t i = 0, from = 0; i < ends.size(); from = ends[i++]) {
        header.left = i == 0 ? outerLeft : offsets[i - 1];
        header.right = i + 1 == ends.size() ? outerRight : offsets[i + 1];
        store(offsets[i], header, entries, from, ends[i]);
        above.Append(entries.key(ends[i] - 1), entries.record(ends[i] - 1), offsets[i]);
    }
    if (ends.size() > 1) SetNeighbour(outerRight, offsets.back(), kNoPage, true);
    return above;
}

void TreeEditor::GrowRoot(TreeEntries children) {
    const auto store = [this](auto&&... arguments) { StoreInterior(arguments...); };
    while (children.size() > capacity_) {
        const TreeEntries level = std::move(children);
        children = Spread(root_, PageHeader{}, level, PlanInterior(level.size(), capacity_), true, store);
    }
    PageHeader header;
    header.attributes = kRootPage;
    StoreInterior(root_, header, children, 0, children.size());
}

void TreeEditor::WriteLeaf(PageHeader header, Cut cut, bool lastChanged) {
    const std::uint32_t greatest = GreatestRecord(entries_);
    if (greatest > layout_.recordMask()) layout_ = LeafLayout::For(shape_.length, greatest);
    const auto ends = PlanLeaves(entries_, shape_, layout_, cut);
    if (ends.size() <= 1) {
        StoreLeaf(leaf_, header, entries_, 0, entries_.size());
        if (lastChanged && !path_.empty() && !entries_.empty())
            RenameChild(path_.size() - 1, entries_.key(entries_.size() - 1),
                        entries_.record(entries_.size() - 1));
        return;
    }
    const auto store = [this](auto&&... arguments) { StoreLeaf(arguments...); };
    TreeEntries above = Spread(leaf_, header, entries_, ends, path_.empty(), store);
    if (path_.empty())
        GrowRoot(std::move(above));
    else
        ReplaceChild(path_.size() - 1, above);
}

void TreeEditor::WriteInterior(std::size_t level, PageHeader header, TreeEntries& entries, bool lastChanged) {
    const std::uint32_t offset = path_[level].page;
    if (entries.size() <= capacity_) {
        StoreInterior(offset, header, entries, 0, entries.size());
        if (lastChanged && level > 0)
            RenameChild(level - 1, entries.key(entries.size() - 1), entries.record(entries.size() - 1));
        return;
    }
    const auto store = [this](auto&&... arguments) { StoreInterior(arguments...); };
    TreeEntries above =
        Spread(offset, header, entries, PlanInterior(entries.size(), capacity_), level == 0, store);
    if (level == 0)
        GrowRoot(std::move(above));
    else
        ReplaceChild(level - 1, above);
}

void TreeEditor::ReplaceChild(std::size_t level, const TreeEntries& children) {
    TreeEntries entries(shape_.length);
    const PageHeader header = LoadInterior(path_[level].page, entries);
    const std::size_t index = path_[level].index;
    const bool last = index + 1 == entries.size();
    entries.Replace(index, children);
    WriteInterior(level, header, entries, last);
}

void TreeEditor::RenameChild(std::size_t level, const std::byte* key, std::uint32_t record) {
    TreeEntries entries(shape_.length);
    for (std::size_t i = level + 1; i-- > 0;) {
        const PageHeader header = LoadInterior(path_[i].page, entries);
        const std::size_t index = path_[i].index;
        entries.Rename(index, key, record);
        StoreInterior(path_[i].page, header, entries, 0, entries.size());
        if (index + 1 != entries.size()) return;
    }
}

void TreeEditor::Unlink(std::uint32_t offset, const PageHeader& header) {
    SetNeighbour(header.left, kNoPage, header.right, false);
    SetNeighbour(header.right, header.left, kNoPage, true);
    pages_.Release(offset);
}

void TreeEditor::RemoveChild(std::size_t level) {
    TreeEntries entries(shape_.length);
    const std::uint32_t offset = path_[level].page;
    const PageHeader header = LoadInterior(offset, entries);
    const bool last = path_[level].index + 1 == entries.size();
    entries.Erase(path_[level].index);
    if (!entries.empty()) {
        StoreInterior(offset, header, entries, 0, entries.size());
        if (last && level > 0)
            RenameChild(level - 1, entries.key(entries.size() - 1), entries.record(entries.size() - 1));
    } else if (level > 0) {
        Unlink(offset, header);
        RemoveChild(level - 1);
    } else {
        PageHeader empty;
        empty.attributes = kRootPage | kLeafPage;
        layout_ = LeafLayout::For(shape_.length, 0);
        StoreLeaf(root_, empty, entries, 0, 0);
    }
}

void TreeEditor::CollapseRoot() {
    for (;;) {
        std::array<std::byte, kPageSize> bytes{};
        {
            const PageBytes root = pages_.Read(root_);
            const PageHeader header = PageHeader::Parse(root, root_);
            if (header.isLeaf() || header.count != 1) return;
        }
        const std::uint32_t child = InteriorPage(pages_.Read(root_), root_, shape_).child(0);
        if (child == root_) FailDamaged(root_, "the root page is its own child");
        const PageBytes content = pages_.Read(child);
        std::copy(content.begin(), content.end(), bytes.begin());
        PageHeader header = PageHeader::Parse(bytes, child);
        header.attributes |= kRootPage;
        header.left = kNoPage;
        header.right = kNoPage;
        header.Store(bytes);
        pages_.Write(root_, bytes);
        pages_.Release(child);
    }
}

bool TreeEditor::JoinLeaf(const PageHeader& header) {
    if (path_.empty() || PackedSize(entries_, shape_, layout_) >= kJoinBelow) return false;
    Step& parent = path_.back();
    TreeEntries siblings(shape_.length);
    const PageHeader parentHeader = LoadInterior(parent.page, siblings);
    // With the right neighbour where there is one under this parent, else with the left one.
    const bool withRight = parent.index + 1 < siblings.size();
    if (!withRight && parent.index == 0) return false;
    const std::size_t leftIndex = withRight ? parent.index : parent.index - 1;
    const std::uint32_t left = siblings.child(leftIndex);
    const std::uint32_t right = siblings.child(leftIndex + 1);
    const LeafLayout ownLayout = layout_;
    const PageHeader otherHeader = LoadLeaf(withRight ? right : left, neighbour_);
    TreeEntries joined = withRight ? entries_ : neighbour_;
    joined.AppendAll(withRight ? neighbour_ : entries_);
    layout_ = LeafLayout::For(shape_.length, GreatestRecord(joined));
    if (PackedSize(joined, shape_, layout_) > kJoinedRoom) {
        layout_ = ownLayout;
        return false;
    }
    const PageHeader& leftHeader = withRight ? header : otherHeader;
    const PageHeader& rightHeader = withRight ? otherHeader : header;
    PageHeader newHeader = leftHeader;
    newHeader.right = rightHeader.right;
    StoreLeaf(left, newHeader, joined, 0, joined.size());
    SetNeighbour(rightHeader.right, left, kNoPage, true);
    pages_.Release(right);

    const bool lastChanged = leftIndex + 2 == siblings.size();
    siblings.Rename(leftIndex, joined.key(joined.size() - 1), joined.record(joined.size() - 1));
    siblings.Erase(leftIndex + 1);
    parent.index = leftIndex;
    WriteInterior(path_.size() - 1, parentHeader, siblings, lastChanged);
    return true;
}

bool TreeEditor::Insert(const std::byte* key, std::uint32_t record) {
    Descend(key, record);
    const PageHeader header = LoadLeaf(leaf_, entries_);
    const std::size_t index = LowerBound(entries_, key, record);
    if (IsEntry(entries_, index, key, record)) return false;
    const bool last = index == entries_.size();
    entries_.Insert(index, key, record);
    WriteLeaf(header, last && header.right == kNoPage ? Cut::Last : Cut::Half, last);
    return true;
}

std::size_t TreeEditor::InsertSorted(const KeySorter& keys, std::size_t from) {
    Descend(keys.key(from), keys.record(from));
    const PageHeader header = LoadLeaf(leaf_, entries_);
    // The leaf takes what is not behind the entry that stands for it above; the last leaf takes everything.
    std::size_t end = std::min(keys.size(), from + kLongestRun);
    if (!path_.empty()) {
        const Step& step = path_.back();
        const InteriorPage page(pages_.Read(step.page), step.page, shape_);
        const auto isBehind = [&](std::size_t at) {
            return CompareEntries(keys.key(at), keys.record(at), page.key(step.index),
                                  page.record(step.index), shape_.length) > 0;
        };
        if (!isBehind(from))
            for (std::size_t at = from + 1; at < end; ++at)
                if (isBehind(at)) end = at;
    }
    neighbour_.Clear();
    std::size_t old = 0;
    for (std::size_t at = from; at < end; ++at) {
        const std::byte* key = keys.key(at);
        const std::uint32_t record = keys.record(at);
        while (old < entries_.size() &&
               CompareEntries(entries_.key(old), entries_.record(old), key, record, shape_.length) < 0) {
            neighbour_.Append(entries_.key(old), entries_.record(old));
            ++old;
        }
        if (IsEntry(entries_, old, key, record))
            FailDamaged(leaf_, "it already has the key of record " + std::to_string(record));
        neighbour_.Append(key, record);
    }
    const bool last = old == entries_.size();
    for (; old < entries_.size(); ++old)
        neighbour_.Append(entries_.key(old), entries_.record(old));
    std::swap(entries_, neighbour_);
    WriteLeaf(header, last && header.right == kNoPage ? Cut::Last : Cut::Half, last);
    return end - from;
}

bool TreeEditor::Remove(const std::byte* key, std::uint32_t record) {
    Descend(key, record);
    const PageHeader header = LoadLeaf(leaf_, entries_);
    const std::size_t index = LowerBound(entries_, key, record);
    if (!IsEntry(entries_, index, key, record)) return false;
    const bool last = index + 1 == entries_.size();
    entries_.Erase(index);
    if (entries_.empty() && !path_.empty()) {
        Unlink(leaf_, header);
        RemoveChild(path_.size() - 1);
    } else if (!JoinLeaf(header)) {
        WriteLeaf(header, Cut::Half, last);
    }
    CollapseRoot();
    return true;
}

std::optional<std::uint32_t> TreeEditor::Find(const std::byte* key) {
    Descend(key, 0);
    LoadLeaf(leaf_, entries_);
    const std::size_t index = LowerBound(entries_, key, 0);
    if (index >= entries_.size() || std::memcmp(entries_.key(index), key, shape_.length) != 0)
        return std::nullopt;
    return entries_.record(index);
}

}  // namespace zu::dbf::cdx
