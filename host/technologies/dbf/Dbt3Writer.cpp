#include "host/technologies/dbf/Dbt3Writer.h"

#include <array>
#include <limits>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "portable/error/Error.h"

namespace zu::dbf {

namespace {
constexpr std::uint32_t kBlock = 512;
constexpr std::size_t kVersionOffset = 16;
constexpr std::byte kVersion{0x03};
}  // namespace

Dbt3Writer::Dbt3Writer(std::unique_ptr<files::File> file) : stream_(std::move(file)) {
    stream_.AppendZeros(kBlock);
}

std::uint32_t Dbt3Writer::Append(std::string_view content, bool) {
    if (content.find(static_cast<char>(kEndOfFile)) != std::string_view::npos) {
        throw Error(ErrorKind::InvalidArgument, "A memo with a 1A byte in it cannot be stored in the file " +
                                                    stream_.file().path() + ", where this byte ends a memo.");
    }
    const std::uint64_t block = stream_.position() / kBlock;
    if (block > std::numeric_limits<std::int32_t>::max()) {
        throw Error(ErrorKind::Overflow, "The file " + stream_.file().path() + " cannot hold one more memo.");
    }
    stream_.Append(std::as_bytes(std::span(content)));
    constexpr std::array<std::byte, 2> kEnd = {std::byte{kEndOfFile}, std::byte{kEndOfFile}};
    stream_.Append(kEnd);
    const auto tail = static_cast<std::size_t>(stream_.position() % kBlock);
    if (tail != 0) stream_.AppendZeros(kBlock - tail);
    return static_cast<std::uint32_t>(block);
}

void Dbt3Writer::Close() {
    const auto next = static_cast<std::uint32_t>(stream_.position() / kBlock);
    stream_.Drain();
    std::array<std::byte, kVersionOffset + 1> start{};
    StoreLittle(start.data(), next);
    start[kVersionOffset] = kVersion;
    stream_.file().WriteAt(0, start);
}

}  // namespace zu::dbf
