#include "host/technologies/dbf/cdx/PageHeader.h"

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/Damage.h"

namespace zu::dbf::cdx {

PageHeader PageHeader::Parse(PageBytes bytes, std::uint32_t offset) {
    const std::byte* raw = bytes.data();
    PageHeader header;
    header.attributes = LoadLittle<std::uint16_t>(raw + page::kAttributes);
    header.count = LoadLittle<std::uint16_t>(raw + page::kCount);
    header.left = LoadLittle<std::uint32_t>(raw + page::kLeft);
    header.right = LoadLittle<std::uint32_t>(raw + page::kRight);
    if (header.attributes > kHighestAttribute) {
        FailDamaged(offset, "attributes " + std::to_string(header.attributes) + " are not those of a page");
    }
    return header;
}

void PageHeader::Store(PageBuffer bytes) const noexcept {
    std::byte* raw = bytes.data();
    StoreLittle<std::uint16_t>(raw + page::kAttributes, attributes);
    StoreLittle<std::uint16_t>(raw + page::kCount, count);
    StoreLittle<std::uint32_t>(raw + page::kLeft, left);
    StoreLittle<std::uint32_t>(raw + page::kRight, right);
}

}  // namespace zu::dbf::cdx
