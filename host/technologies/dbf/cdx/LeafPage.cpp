#include "host/technologies/dbf/cdx/LeafPage.h"

#include <cstring>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/Damage.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"

namespace zu::dbf::cdx {

namespace {

// Entries are at most eight bytes, but the last ones of a full page end where the page ends.
std::uint64_t LoadEntry(PageBytes bytes, std::size_t position, unsigned size) noexcept {
    if (position + 8 <= kPageSize) return LoadLittle<std::uint64_t>(bytes.data() + position);
    std::uint64_t value = 0;
    for (unsigned i = size; i-- > 0;)
        value = value << 8 | std::to_integer<std::uint64_t>(bytes[position + i]);
    return value;
}

PageHeader ParseLeafHeader(PageBytes bytes, std::uint32_t offset, LeafLayout& layout) {
    const PageHeader header = PageHeader::Parse(bytes, offset);
    if (!header.isLeaf()) FailDamaged(offset, "a leaf is expected, this is an interior page");
    layout = LeafLayout::Parse(bytes, offset);
    if (std::size_t{header.count} * layout.entrySize > leaf::kRoom) {
        FailDamaged(offset, std::to_string(header.count) + " entries of " + std::to_string(layout.entrySize) +
                                " bytes are more than a page holds");
    }
    return header;
}

}  // namespace

void LeafPage::Unpack(PageBytes bytes, std::uint32_t offset, const KeyShape& shape) {
    header_ = ParseLeafHeader(bytes, offset, layout_);
    statedFree_ = LoadLittle<std::uint16_t>(bytes.data() + leaf::kFree);
    keyLength_ = shape.length;
    firstDuplicate_ = 0;
    const std::size_t count = header_.count;
    records_.resize(count);
    keys_.resize(count * keyLength_);

    const std::uint32_t recordMask = layout_.recordMask();
    const std::uint32_t countMask = layout_.countMask();
    const std::size_t entriesEnd = leaf::kEntries + count * layout_.entrySize;
    std::size_t position = kPageSize;
    const std::byte* previous = nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t entry =
            LoadEntry(bytes, leaf::kEntries + i * layout_.entrySize, layout_.entrySize);
        records_[i] = static_cast<std::uint32_t>(entry) & recordMask;
        const auto counts = static_cast<std::uint32_t>(entry >> layout_.recordBits);
        // The first key shares nothing, whatever the entry says: there is no key before it.
        const std::size_t duplicate = previous == nullptr ? 0 : counts & countMask;
        if (previous == nullptr) firstDuplicate_ = counts & countMask;
        const std::size_t trailing = counts >> layout_.countBits & countMask;
        if (duplicate + trailing > keyLength_) {
            FailDamaged(offset, "entry " + std::to_string(i + 1) + " leaves out more bytes than a key has");
        }
        const std::size_t fresh = keyLength_ - duplicate - trailing;
        if (position - entriesEnd < fresh) {
            FailDamaged(offset, "the key bytes of entry " + std::to_string(i + 1) + " run into the entries");
        }
        position -= fresh;
        std::byte* key = keys_.data() + i * keyLength_;
        if (duplicate > 0) std::memcpy(key, previous, duplicate);
        std::memcpy(key + duplicate, bytes.data() + position, fresh);
        std::memset(key + duplicate + fresh, std::to_integer<int>(shape.fill), trailing);
        previous = key;
    }
    countedFree_ = position - entriesEnd;
}

std::size_t LeafPage::LowerBound(const std::byte* key, std::uint32_t record) const noexcept {
    std::size_t low = 0;
    std::size_t high = size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (CompareEntries(this->key(middle), this->record(middle), key, record, keyLength_) < 0) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

PageHeader LeafPage::ReadRecords(PageBytes bytes, std::uint32_t offset, std::vector<std::uint32_t>& records) {
    LeafLayout layout;
    const PageHeader header = ParseLeafHeader(bytes, offset, layout);
    const std::uint32_t mask = layout.recordMask();
    for (std::size_t i = 0; i < header.count; ++i) {
        const std::size_t position = leaf::kEntries + i * layout.entrySize;
        records.push_back(static_cast<std::uint32_t>(LoadEntry(bytes, position, layout.entrySize)) & mask);
    }
    return header;
}

}  // namespace zu::dbf::cdx
