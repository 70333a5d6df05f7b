#include "host/technologies/dbf/cdx/LeafPacker.h"

#include <algorithm>
#include <cstring>

#include "host/technologies/dbf/ByteOrder.h"
#include "portable/text/ByteWords.h"

namespace zu::dbf::cdx {

LeafPacker::LeafPacker(const KeyShape& shape, const LeafLayout& layout, std::size_t room)
    : shape_(shape), layout_(layout), room_(std::min(room, leaf::kRoom)), last_(shape.length) {}

bool LeafPacker::Add(const std::byte* key, std::uint32_t record) noexcept {
    if (record > layout_.recordMask()) return false;
    const std::size_t length = shape_.length;
    std::size_t used = length;
    while (used > 0 && key[used - 1] == shape_.fill)
        --used;
    std::size_t duplicate = 0;
    if (count_ > 0) {
        while (duplicate < used && key[duplicate] == last_[duplicate])
            ++duplicate;
    }
    const std::size_t fresh = used - duplicate;
    const std::size_t taken = entriesEnd_ - leaf::kEntries + kPageSize - keysStart_;
    // A page always takes its first key: a room too small for one would never fill any page.
    const std::size_t limit = count_ == 0 ? leaf::kRoom : room_;
    if (taken + layout_.entrySize + fresh > limit) return false;

    std::uint64_t entry = length - used;
    entry = entry << layout_.countBits | duplicate;
    entry = entry << layout_.recordBits | record;
    for (unsigned i = 0; i < layout_.entrySize; ++i) {
        bytes_[entriesEnd_ + i] = static_cast<std::byte>(entry >> (8 * i));
    }
    entriesEnd_ += layout_.entrySize;
    keysStart_ -= fresh;
    const auto* const different = reinterpret_cast<const char*>(key) + duplicate;
    text::CopyBytes(different, fresh, reinterpret_cast<char*>(bytes_.data()) + keysStart_);
    text::CopyBytes(different, length - duplicate, reinterpret_cast<char*>(last_.data()) + duplicate);
    lastRecord_ = record;
    ++count_;
    return true;
}

void LeafPacker::Store(PageHeader header, PageBuffer out) noexcept {
    header.attributes |= kLeafPage;
    header.count = static_cast<std::uint16_t>(count_);
    header.Store(bytes_);
    StoreLittle<std::uint16_t>(bytes_.data() + leaf::kFree,
                               static_cast<std::uint16_t>(keysStart_ - entriesEnd_));
    layout_.Store(bytes_);
    std::memcpy(out.data(), bytes_.data(), kPageSize);
    bytes_.fill(std::byte{0});
    count_ = 0;
    entriesEnd_ = leaf::kEntries;
    keysStart_ = kPageSize;
}

}  // namespace zu::dbf::cdx
