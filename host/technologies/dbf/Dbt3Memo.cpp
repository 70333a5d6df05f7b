#include "host/technologies/dbf/Dbt3Memo.h"

#include "host/technologies/dbf/DbfFormat.h"

namespace zu::dbf {

namespace {
constexpr std::uint64_t kBlock = 512;
}

MemoOutcome Dbt3Memo::Read(std::uint32_t block, std::string& out) {
    const std::uint64_t offset = block * kBlock;
    if (!source_.Reaches(offset + 1)) return MemoOutcome::Unreadable;
    source_.ReadUntil(offset, std::byte{kEndOfFile}, out);
    return MemoOutcome::Found;
}

}  // namespace zu::dbf
