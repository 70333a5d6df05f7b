#include "host/technologies/dbf/FptMemo.h"

#include <array>

#include "host/technologies/dbf/ByteOrder.h"

namespace zu::dbf {

MemoOutcome FptMemo::Read(std::uint32_t block, std::string& out) {
    const std::uint64_t offset = std::uint64_t{block} * blockSize_;
    std::array<std::byte, fpt::kBlockHeader> start{};
    if (offset < fpt::kHeaderSize) return MemoOutcome::Unreadable;
    if (!source_.Reaches(offset + start.size()) || !source_.Read(offset, start))
        return MemoOutcome::Unreadable;
    if (LoadBig32(start.data()) > fpt::kHighestKind) return MemoOutcome::Unreadable;
    const std::uint64_t length = LoadBig32(&start[4]);
    if (!source_.Reaches(offset + fpt::kBlockHeader + length)) return MemoOutcome::Unreadable;
    return source_.Read(offset + fpt::kBlockHeader, length, out) ? MemoOutcome::Found
                                                                 : MemoOutcome::Unreadable;
}

}  // namespace zu::dbf
