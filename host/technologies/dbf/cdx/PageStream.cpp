#include "host/technologies/dbf/cdx/PageStream.h"

#include <algorithm>
#include <span>

#include "portable/error/Error.h"

namespace zu::dbf::cdx {

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 20;

}  // namespace

PageStream::PageStream(files::File& file, std::uint32_t offset)
    : file_(file), start_(offset), block_(kBlockSize) {}

PageBuffer PageStream::Next() {
    if (used_ == block_.size()) Flush();
    if (position() > kNoPage - 2 * kPageSize) {
        throw Error(ErrorKind::Overflow, "index \"" + file_.path() + "\" would be greater than 4 GB");
    }
    const PageBuffer page(block_.data() + used_, kPageSize);
    std::fill(page.begin(), page.end(), std::byte{0});
    used_ += kPageSize;
    return page;
}

void PageStream::Flush() {
    if (used_ == 0) return;
    file_.WriteAt(start_, std::span<const std::byte>(block_.data(), used_));
    start_ += static_cast<std::uint32_t>(used_);
    used_ = 0;
}

}  // namespace zu::dbf::cdx
