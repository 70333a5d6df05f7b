#include "host/technologies/dbf/transaction/StretchReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "portable/error/Error.h"

namespace zu::dbf::transaction {
namespace {

constexpr std::size_t kStretch = 65536;
/// Pieces this far apart are not worth the reading of what lies between them.
constexpr std::uint64_t kFar = 4096;
/// Behind it lie the bytes that programs lock in place of records: what holds a locked byte cannot be read on
/// Windows, so nothing is read there that nobody asked for.
constexpr std::uint64_t kFirstLockByte = 1'000'000'000;

}  // namespace

void ReadFully(const files::File& file, std::uint64_t offset, std::span<std::byte> buffer) {
    if (file.ReadAt(offset, buffer) != buffer.size())
        throw Error(ErrorKind::IoFailure,
                    "The file " + file.path() + " is shorter than it was a moment ago.");
}

void StretchReader::Read(std::uint64_t offset, std::span<std::byte> piece, std::uint64_t next) {
    const std::uint64_t end = offset + piece.size();
    const bool isHeld = offset >= begin_ && end <= begin_ + stretch_.size();
    if (!isHeld) {
        const std::uint64_t step = next > offset ? next - offset : offset - next;
        if (step == 0 || step > kFar || piece.size() > kStretch || end + kStretch > kFirstLockByte)
            return ReadFully(file_, offset, piece);
        const std::uint64_t begin = next > offset ? offset : end - std::min<std::uint64_t>(end, kStretch);
        std::vector<std::byte> stretch(
            static_cast<std::size_t>(std::min<std::uint64_t>(kStretch, size_ - begin)));
        ReadFully(file_, begin, stretch);
        begin_ = begin;
        stretch_ = std::move(stretch);
    }
    std::memcpy(piece.data(), stretch_.data() + (offset - begin_), piece.size());
}

}  // namespace zu::dbf::transaction
