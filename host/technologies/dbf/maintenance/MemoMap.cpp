#include "host/technologies/dbf/maintenance/MemoMap.h"

#include <algorithm>
#include <array>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/Dbt4Memo.h"
#include "host/technologies/dbf/FptMemo.h"

namespace zu::dbf::maintenance {
namespace {

constexpr std::size_t kHeaderPart = 24;  // up to here the headers say something
constexpr std::uint32_t kDbt3Block = 512;
constexpr std::size_t kMostFindings = 20;

}  // namespace

MemoMap::MemoMap(const files::File& file, MemoFormat format) : path_(file.path()) {
    std::array<std::byte, kHeaderPart> head{};
    file.ReadAt(0, head);
    const bool bigEndian = format == MemoFormat::Fpt;
    nextFree_ = bigEndian ? LoadBig32(head.data()) : LoadLittle<std::uint32_t>(head.data());
    switch (format) {
        case MemoFormat::Fpt:
            blockSize_ = std::to_integer<std::uint32_t>(head[fpt::kBlockSize]) << 8 |
                         std::to_integer<std::uint32_t>(head[fpt::kBlockSize + 1]);
            overhead_ = fpt::kBlockHeader;
            break;
        case MemoFormat::Dbt4:
            blockSize_ = LoadLittle<std::uint16_t>(&head[Dbt4Memo::kBlockSizeOffset]);
            if (blockSize_ == 0) blockSize_ = Dbt4Memo::kUsualBlockSize;
            overhead_ = 8;
            break;
        default:
            // Its texts end with one byte 1A at least.
            blockSize_ = kDbt3Block;
            overhead_ = 1;
            break;
    }
    blockSize_ = std::max(blockSize_, 1U);
}

void MemoMap::Add(std::uint32_t block, std::uint64_t length, std::uint32_t record) {
    const std::uint64_t blocks = (length + overhead_ + blockSize_ - 1) / blockSize_;
    uses_.push_back({block, static_cast<std::uint32_t>(blocks), record});
}

std::vector<std::string> MemoMap::Findings() {
    std::vector<std::string> findings;
    std::sort(uses_.begin(), uses_.end(), [](const Use& left, const Use& right) {
        return left.first != right.first ? left.first < right.first : left.record < right.record;
    });
    std::uint64_t end = 0;
    std::uint32_t before = 0;
    for (const Use& use : uses_) {
        if (use.first < end && findings.size() < kMostFindings)
            findings.push_back(path_ + ": the memo at block " + std::to_string(use.first) + " of record " +
                               std::to_string(use.record) + " lies over one of record " +
                               std::to_string(before) + ".");
        if (use.first + std::uint64_t{use.blocks} > end) {
            end = use.first + std::uint64_t{use.blocks};
            before = use.record;
        }
    }
    if (end > nextFree_)
        findings.push_back(path_ + ": the header counts " + std::to_string(nextFree_) +
                           " blocks, but memos reach up to block " + std::to_string(end) + ".");
    return findings;
}

}  // namespace zu::dbf::maintenance
