#include "host/technologies/dbf/Dbt4Writer.h"

#include <algorithm>
#include <array>
#include <limits>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/Dbt4Memo.h"
#include "portable/error/Error.h"
#include "portable/files/Path.h"

namespace zu::dbf {

namespace {

constexpr std::uint32_t kBlock = Dbt4Memo::kUsualBlockSize;
constexpr std::uint32_t kUsedBlock = 0x0008FFFF;
constexpr std::size_t kBlockHeader = 8;
// The header: next free block, 8 bytes of the table's name at 8, the number 0x0102 at 18, the block size
// at 20.
constexpr std::size_t kNameOffset = 8;
constexpr std::size_t kNameLength = 8;
constexpr std::size_t kVersionOffset = 18;
constexpr std::uint16_t kVersion = 0x0102;
constexpr std::size_t kHeaderLength = 24;

}  // namespace

Dbt4Writer::Dbt4Writer(std::unique_ptr<files::File> file) : stream_(std::move(file)) {
    stream_.AppendZeros(kBlock);
}

std::uint32_t Dbt4Writer::Append(std::string_view content, bool) {
    const std::uint64_t block = stream_.position() / kBlock;
    if (content.size() > std::numeric_limits<std::int32_t>::max() - kBlock ||
        block > std::numeric_limits<std::int32_t>::max()) {
        throw Error(ErrorKind::Overflow, "The file " + stream_.file().path() + " cannot hold a memo of " +
                                             std::to_string(content.size()) + " bytes more.");
    }
    std::array<std::byte, kBlockHeader> start{};
    StoreLittle(start.data(), kUsedBlock);
    StoreLittle(&start[4], static_cast<std::uint32_t>(content.size() + kBlockHeader));
    stream_.Append(start);
    stream_.Append(std::as_bytes(std::span(content)));
    const auto tail = static_cast<std::size_t>(stream_.position() % kBlock);
    if (tail != 0) stream_.AppendZeros(kBlock - tail);
    return static_cast<std::uint32_t>(block);
}

void Dbt4Writer::Close() {
    const auto next = static_cast<std::uint32_t>(stream_.position() / kBlock);
    stream_.Drain();
    std::array<std::byte, kHeaderLength> start{};
    StoreLittle(start.data(), next);
    // The file may still have another name than it will have, but what stands in front of the point is the
    // same.
    const std::string_view name = files::FileName(stream_.file().path());
    const std::string_view stem = name.substr(0, std::min(name.find('.'), kNameLength));
    std::transform(stem.begin(), stem.end(), start.begin() + kNameOffset,
                   [](char c) { return static_cast<std::byte>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c); });
    StoreLittle(&start[kVersionOffset], kVersion);
    StoreLittle(&start[Dbt4Memo::kBlockSizeOffset], static_cast<std::uint16_t>(kBlock));
    stream_.file().WriteAt(0, start);
}

}  // namespace zu::dbf
