#include "host/technologies/dbf/cdx/InteriorPage.h"

#include <cstring>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/Damage.h"
#include "host/technologies/dbf/cdx/KeyOrder.h"

namespace zu::dbf::cdx {

InteriorPage::InteriorPage(PageBytes bytes, std::uint32_t offset, const KeyShape& shape)
    : bytes_(bytes), header_(PageHeader::Parse(bytes, offset)), keyLength_(shape.length) {
    if (header_.isLeaf()) FailDamaged(offset, "an interior page is expected, this is a leaf");
    if (header_.count == 0) FailDamaged(offset, "an interior page without entries");
    if (header_.count > InteriorCapacity(keyLength_)) {
        FailDamaged(offset, std::to_string(header_.count) + " entries are more than the " +
                                std::to_string(InteriorCapacity(keyLength_)) + " that a page holds");
    }
}

std::uint32_t InteriorPage::record(std::size_t index) const noexcept {
    return LoadBig32(entry(index) + keyLength_);
}

std::uint32_t InteriorPage::child(std::size_t index) const noexcept {
    return LoadBig32(entry(index) + keyLength_ + 4);
}

std::size_t InteriorPage::LowerBound(const std::byte* key, std::uint32_t record) const noexcept {
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

bool InteriorPacker::Add(const std::byte* key, std::uint32_t record, std::uint32_t child) noexcept {
    if (count_ >= capacity_ || count_ >= InteriorCapacity(keyLength_)) return false;
    std::byte* entry = bytes_.data() + interior::kEntries + count_ * (keyLength_ + interior::kEntryTail);
    std::memcpy(entry, key, keyLength_);
    StoreBig32(entry + keyLength_, record);
    StoreBig32(entry + keyLength_ + 4, child);
    ++count_;
    return true;
}

void InteriorPacker::Store(PageHeader header, PageBuffer out) noexcept {
    header.attributes = static_cast<std::uint16_t>(header.attributes & ~kLeafPage);
    header.count = static_cast<std::uint16_t>(count_);
    header.Store(bytes_);
    std::memcpy(out.data(), bytes_.data(), kPageSize);
    bytes_.fill(std::byte{0});
    count_ = 0;
}

}  // namespace zu::dbf::cdx
