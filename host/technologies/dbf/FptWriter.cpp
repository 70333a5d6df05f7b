#include "host/technologies/dbf/FptWriter.h"

#include <array>
#include <limits>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/FptMemo.h"
#include "portable/error/Error.h"

namespace zu::dbf {

namespace {
constexpr std::uint32_t kBlock = 64;
constexpr std::size_t kGreatestContent = std::numeric_limits<std::int32_t>::max() - kBlock;
}  // namespace

FptWriter::FptWriter(std::unique_ptr<files::File> file) : stream_(std::move(file)) {
    stream_.AppendZeros(fpt::kHeaderSize);
}

std::uint32_t FptWriter::Append(std::string_view content, bool isText) {
    const std::uint64_t block = stream_.position() / kBlock;
    if (content.size() > kGreatestContent || block > std::numeric_limits<std::uint32_t>::max()) {
        throw Error(ErrorKind::Overflow, "The file " + stream_.file().path() + " cannot hold a memo of " +
                                             std::to_string(content.size()) + " bytes more.");
    }
    std::array<std::byte, fpt::kBlockHeader> start{};
    StoreBig32(start.data(), isText ? fpt::kText : 0);
    StoreBig32(&start[4], static_cast<std::uint32_t>(content.size()));
    stream_.Append(start);
    stream_.Append(std::as_bytes(std::span(content)));
    const auto tail = static_cast<std::size_t>(stream_.position() % kBlock);
    if (tail != 0) stream_.AppendZeros(kBlock - tail);
    return static_cast<std::uint32_t>(block);
}

void FptWriter::Close() {
    const auto next = static_cast<std::uint32_t>(stream_.position() / kBlock);
    stream_.Drain();
    std::array<std::byte, 8> start{};
    StoreBig32(&start[fpt::kNextFree], next);
    start[fpt::kBlockSize + 1] = std::byte{kBlock};
    stream_.file().WriteAt(0, start);
}

}  // namespace zu::dbf
