#include "host/technologies/dbf/cdx/LeafPage.h"

#include <cstring>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"
#include "host/technologies/dbf/cdx/LeafEntries.h"

namespace zu::dbf::cdx {

void LeafPage::Unpack(PageBytes bytes, std::uint32_t offset, const KeyShape& shape) {
    LeafEntries entries(bytes, offset, shape.length);
    header_ = entries.header();
    layout_ = entries.layout();
    statedFree_ = LoadLittle<std::uint16_t>(bytes.data() + leaf::kFree);
    keyLength_ = shape.length;
    const std::size_t count = header_.count;
    records_.resize(count);
    keys_.resize(count * keyLength_);

    const std::byte* previous = keys_.data();
    for (std::size_t i = 0; entries.Next(); ++i) {
        records_[i] = entries.record();
        std::byte* key = keys_.data() + i * keyLength_;
        const std::size_t duplicate = entries.duplicate();
        const std::size_t used = duplicate + entries.freshCount();
        if (duplicate > 0) std::memcpy(key, previous, duplicate);
        std::memcpy(key + duplicate, entries.fresh(), entries.freshCount());
        std::memset(key + used, std::to_integer<int>(shape.fill), keyLength_ - used);
        previous = key;
    }
    firstDuplicate_ = entries.claimedDuplicate();
    countedFree_ = entries.free();
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
    const LeafEntries entries(bytes, offset, 0);
    for (std::size_t i = 0; i < entries.header().count; ++i)
        records.push_back(entries.RecordAt(i));
    return entries.header();
}

}  // namespace zu::dbf::cdx
