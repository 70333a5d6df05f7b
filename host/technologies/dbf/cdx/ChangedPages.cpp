#include "host/technologies/dbf/cdx/ChangedPages.h"

#include <algorithm>
#include <array>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/CdxFormat.h"
#include "portable/error/Error.h"

namespace zu::dbf::cdx {
namespace {

using transaction::Part;

// Fields of the file header that change while the tags stay what they are.
constexpr std::size_t kFreeListAt = 4;
constexpr std::size_t kCounterAt = 8;

using Page = std::array<std::byte, kPageSize>;

Page Copy(PageBytes bytes) {
    Page page;
    std::copy(bytes.begin(), bytes.end(), page.begin());
    return page;
}

}  // namespace

PageBytes ChangedPages::Read(std::uint32_t offset) {
    const auto written = changes_.Find(Part::Index, offset);
    if (written.size() == kPageSize) return PageBytes(written.data(), kPageSize);
    return file_.Page(offset);
}

void ChangedPages::Write(std::uint32_t offset, PageBytes bytes) {
    changes_.Write(Part::Index, offset, bytes);
}

std::uint32_t ChangedPages::FirstFree() {
    const auto head = LoadLittle<std::uint32_t>(Read(0).data() + kFreeListAt);
    if (head == 0 || head == kNoPage) return kNoPage;
    const std::uint64_t size = changes_.SizeAfter(Part::Index, file_.size());
    if (head % kPageSize != 0 || head < kHeaderSize || head + std::uint64_t{kPageSize} > size) return kNoPage;
    // Some writers leave what they like in this field. A page in use never looks like an unused one: its
    // attributes, count or links are not all zero.
    const PageBytes page = Read(head);
    const bool unused =
        std::all_of(page.begin() + 4, page.end(), [](std::byte byte) { return byte == std::byte{0}; });
    return unused ? head : kNoPage;
}

void ChangedPages::SetFirstFree(std::uint32_t offset) {
    Page header = Copy(Read(0));
    StoreLittle<std::uint32_t>(header.data() + kFreeListAt, offset);
    Write(0, header);
}

std::uint32_t ChangedPages::Allocate() {
    const std::uint32_t free = FirstFree();
    if (free != kNoPage) {
        SetFirstFree(LoadLittle<std::uint32_t>(Read(free).data()));
        return free;
    }
    const std::uint64_t size = changes_.SizeAfter(Part::Index, file_.size());
    const std::uint64_t end = (size + kPageSize - 1) / kPageSize * kPageSize;
    if (end + kPageSize > kNoPage)
        throw Error(ErrorKind::Overflow, "The index file " + file_.path() + " cannot grow beyond 4 GB.");
    // Taken at once, so that the next call finds another page.
    Write(static_cast<std::uint32_t>(end), Page{});
    return static_cast<std::uint32_t>(end);
}

void ChangedPages::Release(std::uint32_t offset) {
    const auto head = LoadLittle<std::uint32_t>(Read(0).data() + kFreeListAt);
    Page page{};
    StoreLittle<std::uint32_t>(page.data(), head == kNoPage ? 0 : head);
    Write(offset, page);
    SetFirstFree(offset);
}

void ChangedPages::CountChange() {
    Page header = Copy(Read(0));
    StoreBig32(header.data() + kCounterAt, LoadBig32(header.data() + kCounterAt) + 1);
    Write(0, header);
}

}  // namespace zu::dbf::cdx
