#include "host/technologies/dbf/locking/LockScheme.h"

namespace zu::dbf::locking {
namespace {

constexpr std::uint64_t kFoxProLow = 0x40000000;
constexpr std::uint64_t kFoxProHigh = 0x7FFFFFFE;
// The widest range in use for FoxPro: it covers both regions of record locks and both header bytes.
constexpr LockRange kFoxProTable{0x40000000, 0x3FFFFFFF};

constexpr std::uint64_t kClipperBase = 1000000000;
constexpr LockRange kClipperTable{1000000000, 1000000001};

// Clipper programs with CDX files share the COMIX convention: a writer holds the whole region.
constexpr LockRange kComixIndex{0xFFFEFFFF, 0x10001};

LockRanges One(std::uint64_t offset) noexcept {
    return {{LockRange{offset, 1}, LockRange{}}, 1};
}

LockRanges Two(std::uint64_t first, std::uint64_t second) noexcept {
    return {{LockRange{first, 1}, LockRange{second, 1}}, 2};
}

bool IsVisualFoxPro(const LockedTable& table) noexcept {
    return table.version >= 0x30 && table.version <= 0x32;
}

}  // namespace

LockRanges RecordLock(LockScheme scheme, const LockedTable& table, std::uint32_t number) noexcept {
    if (scheme == LockScheme::Clipper) return One(kClipperBase + number);
    const std::uint64_t low =
        kFoxProLow + table.headerLength + static_cast<std::uint64_t>(number - 1) * table.recordLength;
    const std::uint64_t high = kFoxProHigh - number;
    if (table.hasIndex) return One(high);
    return IsVisualFoxPro(table) ? Two(low, high) : One(low);
}

LockRanges HeaderLock(LockScheme scheme, const LockedTable& table) noexcept {
    if (scheme == LockScheme::Clipper) return One(kClipperBase);
    if (table.hasIndex) return One(kFoxProHigh);
    return IsVisualFoxPro(table) ? Two(kFoxProLow, kFoxProHigh) : One(kFoxProLow);
}

LockRanges TableLock(LockScheme scheme, const LockedTable&) noexcept {
    return {{scheme == LockScheme::Clipper ? kClipperTable : kFoxProTable, LockRange{}}, 1};
}

LockRanges MemoLock(LockScheme scheme) noexcept {
    return scheme == LockScheme::Clipper ? One(0) : Two(0, kFoxProLow);
}

LockRange IndexLock(LockScheme scheme) noexcept {
    return scheme == LockScheme::Clipper ? kComixIndex : LockRange{kFoxProHigh, 1};
}

}  // namespace zu::dbf::locking
