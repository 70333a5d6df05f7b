#include "host/technologies/dbf/cdx/PageHeader.h"

#include "host/technologies/dbf/cdx/ByteOrder.h"
#include "host/technologies/dbf/cdx/Damage.h"

namespace zu::dbf::cdx {

PageHeader PageHeader::Parse(PageBytes bytes, std::uint32_t offset) {
    const std::byte* raw = bytes.data();
    PageHeader header;
    header.attributes = LoadLittle16(raw + page::kAttributes);
    header.count = LoadLittle16(raw + page::kCount);
    header.left = LoadLittle32(raw + page::kLeft);
    header.right = LoadLittle32(raw + page::kRight);
    if (header.attributes > kHighestAttribute) {
        FailDamaged(offset, "attributes " + std::to_string(header.attributes) + " are not those of a page");
    }
    return header;
}

void PageHeader::Store(PageBuffer bytes) const noexcept {
    std::byte* raw = bytes.data();
    StoreLittle16(raw + page::kAttributes, attributes);
    StoreLittle16(raw + page::kCount, count);
    StoreLittle32(raw + page::kLeft, left);
    StoreLittle32(raw + page::kRight, right);
}

}  // namespace zu::dbf::cdx
