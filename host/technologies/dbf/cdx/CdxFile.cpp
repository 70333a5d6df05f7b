#include "host/technologies/dbf/cdx/CdxFile.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <span>
#include <utility>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/cdx/Damage.h"
#include "host/technologies/dbf/transaction/ChangeMark.h"

namespace zu::dbf::cdx {

namespace {

constexpr std::size_t kBlockSize = 65536;
constexpr std::size_t kBlockCount = 64;
constexpr std::size_t kCounterOffset = 8;  // in the file header

}  // namespace

CdxFile::CdxFile(std::unique_ptr<files::File> file) : file_(std::move(file)) {
    Refresh();
}

void CdxFile::Refresh() {
    const std::uint64_t now = file_->Size();
    if (mapping_ == nullptr || now != size_) {
        mapping_.reset();
        mapping_ = file_->Map();
        blocks_.clear();
    }
    size_ = mapping_ == nullptr ? now : mapping_->bytes().size();
    // Offsets in index files have 32 bits: nothing beyond can be reached.
    size_ = std::min<std::uint64_t>(size_, std::uint64_t{1} << 32);
    if (mapping_ == nullptr) {
        blocks_.resize(kBlockCount);
        for (Block& block : blocks_)
            block.number = ~std::uint64_t{0};
    }
}

std::optional<CdxFile::ChangeState> CdxFile::changeState() const noexcept {
    if (mapping_ == nullptr || size_ < kHeaderSize) return std::nullopt;
    // Other processes write there: what is read before and after the pages must be read before and after
    // them.
    std::atomic_thread_fence(std::memory_order_acquire);
    const volatile std::byte* header = mapping_->bytes().data();
    std::array<std::byte, sizeof(ChangeState::counter)> counter{};
    for (std::size_t i = 0; i < counter.size(); ++i)
        counter[i] = header[kCounterOffset + i];
    const ChangeState state{LoadLittle<std::uint32_t>(counter.data()),
                            header[transaction::ChangeMark::kOffset]};
    std::atomic_thread_fence(std::memory_order_acquire);
    return state;
}

const std::byte* CdxFile::Bytes(std::uint32_t offset, std::size_t length) {
    if (offset % kPageSize != 0) {
        FailDamaged(offset, "the offset is not a multiple of " + std::to_string(kPageSize));
    }
    if (length > size_ || offset > size_ - length) {
        FailDamaged(offset, "the page is not inside the file of " + std::to_string(size_) + " bytes");
    }
    if (mapping_ != nullptr) return mapping_->bytes().data() + offset;
    Block& block = blocks_[offset / kBlockSize % kBlockCount];
    if (block.number != offset / kBlockSize) {
        block.number = ~std::uint64_t{0};
        block.bytes.resize(kBlockSize);
        const std::uint64_t start = std::uint64_t{offset} / kBlockSize * kBlockSize;
        const std::size_t got = file_->ReadAt(start, block.bytes);
        // The file may have been cut since its size was asked for.
        std::fill(block.bytes.begin() + static_cast<std::ptrdiff_t>(got), block.bytes.end(), std::byte{0});
        block.number = offset / kBlockSize;
    }
    return block.bytes.data() + offset % kBlockSize;
}

PageBytes CdxFile::Page(std::uint32_t offset) {
    return PageBytes(Bytes(offset, kPageSize), kPageSize);
}

TagHeader CdxFile::Header(std::uint32_t offset) {
    // A header is two pages, which may lie in two blocks.
    std::array<std::byte, kHeaderSize> bytes{};
    std::memcpy(bytes.data(), Bytes(offset, kPageSize), kPageSize);
    if (offset > 0xFFFFFFFF - kPageSize) FailDamaged(offset, "a header does not fit behind this offset");
    const auto second = static_cast<std::uint32_t>(offset + kPageSize);
    std::memcpy(bytes.data() + kPageSize, Bytes(second, kPageSize), kPageSize);
    return TagHeader::Parse(bytes);
}

}  // namespace zu::dbf::cdx
