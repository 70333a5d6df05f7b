#include "host/technologies/dbf/cdx/TreeWriter.h"

#include <algorithm>
#include <utility>

#include "host/technologies/dbf/cdx/InteriorPage.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

// A tenth of each page stays free.
std::size_t LeafRoom(Filling filling) {
    return filling == Filling::Full ? leaf::kRoom : leaf::kRoom - leaf::kRoom / 10;
}

std::size_t Capacity(std::size_t keyLength, Filling filling) {
    const std::size_t all = InteriorCapacity(keyLength);
    return filling == Filling::Full ? all : std::max<std::size_t>(2, all - all / 10);
}

}  // namespace

TreeWriter::TreeWriter(PageStream& out, const KeyShape& shape, std::uint32_t greatestRecord, Filling filling)
    : out_(out),
      shape_(shape),
      capacity_(Capacity(shape.length, filling)),
      leaf_(shape, LeafLayout::For(shape.length, greatestRecord), LeafRoom(filling)) {}

void TreeWriter::Add(const std::byte* key, std::uint32_t record) {
    if (leaf_.Add(key, record)) return;
    if (leaf_.size() > 0) StoreLeaf(false);
    if (!leaf_.Add(key, record)) {
        throw Error(ErrorKind::Internal, "record " + std::to_string(record) + " does not fit into the index");
    }
}

void TreeWriter::StoreLeaf(bool isLast) {
    const std::uint32_t offset = out_.position();
    PageHeader header;
    header.left = leaves_.pages.empty() ? kNoPage : leaves_.pages.back();
    header.right = isLast ? kNoPage : static_cast<std::uint32_t>(offset + kPageSize);
    header.attributes = isLast && leaves_.pages.empty() ? kRootPage : 0;
    leaves_.keys.insert(leaves_.keys.end(), leaf_.lastKey(), leaf_.lastKey() + shape_.length);
    leaves_.records.push_back(leaf_.lastRecord());
    leaf_.Store(header, out_.Next());
    leaves_.pages.push_back(offset);
}

TreeWriter::Level TreeWriter::WriteLevelAbove(const Level& below) {
    Level level;
    const std::size_t entries = below.pages.size();
    const std::size_t pages = (entries + capacity_ - 1) / capacity_;
    InteriorPacker packer(shape_, InteriorCapacity(shape_.length));
    std::size_t next = 0;
    for (std::size_t i = 0; i < pages; ++i) {
        // Entries are spread evenly, so that no page at the end is left with a single one.
        const std::size_t end = entries * (i + 1) / pages;
        for (; next < end; ++next) {
            packer.Add(below.keys.data() + next * shape_.length, below.records[next], below.pages[next]);
        }
        const std::uint32_t offset = out_.position();
        PageHeader header;
        header.left = i == 0 ? kNoPage : level.pages.back();
        header.right = i + 1 == pages ? kNoPage : static_cast<std::uint32_t>(offset + kPageSize);
        header.attributes = pages == 1 ? kRootPage : 0;
        packer.Store(header, out_.Next());
        const std::byte* last = below.keys.data() + (end - 1) * shape_.length;
        level.keys.insert(level.keys.end(), last, last + shape_.length);
        level.records.push_back(below.records[end - 1]);
        level.pages.push_back(offset);
    }
    return level;
}

std::uint32_t TreeWriter::Finish() {
    StoreLeaf(true);
    Level top = std::move(leaves_);
    while (top.pages.size() > 1)
        top = WriteLevelAbove(top);
    return top.pages.front();
}

}  // namespace zu::dbf::cdx
