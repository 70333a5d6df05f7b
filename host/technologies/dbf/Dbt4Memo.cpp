#include "host/technologies/dbf/Dbt4Memo.h"

#include <algorithm>
#include <array>

#include "host/technologies/dbf/ByteOrder.h"

namespace zu::dbf {

namespace {
constexpr std::uint32_t kUsedBlock = 0x0008FFFF;
constexpr std::uint32_t kBlockHeader = 8;
}  // namespace

MemoOutcome Dbt4Memo::Read(std::uint32_t block, std::string& out) {
    const std::uint64_t offset = std::uint64_t{block} * blockSize_;
    std::array<std::byte, kBlockHeader> start{};
    if (!source_.Reaches(offset + start.size()) || !source_.Read(offset, start))
        return MemoOutcome::Unreadable;
    if (LoadLittle<std::uint32_t>(start.data()) != kUsedBlock) return MemoOutcome::Unreadable;
    const auto stated = LoadLittle<std::uint32_t>(&start[4]);
    const std::uint32_t length = stated - std::min(stated, kBlockHeader);
    if (!source_.Reaches(offset + kBlockHeader + length)) return MemoOutcome::Unreadable;
    return source_.Read(offset + kBlockHeader, length, out) ? MemoOutcome::Found : MemoOutcome::Unreadable;
}

}  // namespace zu::dbf
