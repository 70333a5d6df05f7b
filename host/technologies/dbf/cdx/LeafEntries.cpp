#include "host/technologies/dbf/cdx/LeafEntries.h"

#include <string>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/Damage.h"

namespace zu::dbf::cdx {

LeafEntries::LeafEntries(PageBytes bytes, std::uint32_t offset, std::size_t keyLength)
    : bytes_(bytes), offset_(offset), keyLength_(keyLength), header_(PageHeader::Parse(bytes, offset)) {
    if (!header_.isLeaf()) FailDamaged(offset, "a leaf is expected, this is an interior page");
    layout_ = LeafLayout::Parse(bytes, offset);
    const std::size_t size = std::size_t{header_.count} * layout_.entrySize;
    if (size > leaf::kRoom) {
        FailDamaged(offset, std::to_string(header_.count) + " entries of " +
                                std::to_string(layout_.entrySize) + " bytes are more than a page holds");
    }
    entriesEnd_ = leaf::kEntries + size;
}

// Entries are at most eight bytes, but the last ones of a full page end where the page ends.
std::uint64_t LeafEntries::Load(std::size_t index) const noexcept {
    const std::size_t at = leaf::kEntries + index * layout_.entrySize;
    if (at + 8 <= kPageSize) return LoadLittle<std::uint64_t>(bytes_.data() + at);
    std::uint64_t value = 0;
    for (unsigned i = layout_.entrySize; i-- > 0;)
        value = value << 8 | std::to_integer<std::uint64_t>(bytes_[at + i]);
    return value;
}

std::uint32_t LeafEntries::RecordAt(std::size_t index) const noexcept {
    return static_cast<std::uint32_t>(Load(index)) & layout_.recordMask();
}

bool LeafEntries::Next() {
    if (next_ == header_.count) return false;
    const std::uint64_t entry = Load(next_);
    record_ = static_cast<std::uint32_t>(entry) & layout_.recordMask();
    const auto counts = static_cast<std::uint32_t>(entry >> layout_.recordBits);
    duplicate_ = counts & layout_.countMask();
    if (next_ == 0) {
        claimedDuplicate_ = duplicate_;
        duplicate_ = 0;
    }
    ++next_;
    const std::size_t trailing = counts >> layout_.countBits & layout_.countMask();
    if (duplicate_ + trailing > keyLength_)
        FailDamaged(offset_, "entry " + std::to_string(next_) + " leaves out more bytes than a key has");
    freshCount_ = keyLength_ - duplicate_ - trailing;
    if (position_ - entriesEnd_ < freshCount_)
        FailDamaged(offset_, "the key bytes of entry " + std::to_string(next_) + " run into the entries");
    position_ -= freshCount_;
    return true;
}

}  // namespace zu::dbf::cdx
