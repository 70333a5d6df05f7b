#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zu::dbf::locking {

/// Whose locks are taken, so that programs of that family and we keep out of each other's way.
enum class LockScheme : std::uint8_t { FoxPro, Clipper };

/// A run of bytes that stands for something to lock.
struct LockRange {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

/// One or two ranges that are taken together.
struct LockRanges {
    std::array<LockRange, 2> ranges{};
    std::size_t count = 0;
};

/// What the places of the locks depend on, besides the scheme.
struct LockedTable {
    std::uint8_t version = 0;  ///< first byte of the table
    bool hasIndex = false;     ///< a production CDX exists
    std::uint32_t headerLength = 0;
    std::uint32_t recordLength = 0;
};

/// The bytes of the table file that stand for record `number` (one-based).
///
/// FoxPro without a production index locks 0x40000000 plus the record's file offset, with one 0x7FFFFFFE
/// minus the number. Programs disagree about Visual FoxPro tables without an index; there both bytes are
/// taken. Clipper locks 1,000,000,000 plus the number.
LockRanges RecordLock(LockScheme scheme, const LockedTable& table, std::uint32_t number) noexcept;

/// The bytes that stand for the header: whoever appends records holds them.
LockRanges HeaderLock(LockScheme scheme, const LockedTable& table) noexcept;

/// The bytes that stand for the whole table; they include every record lock and the header lock.
LockRanges TableLock(LockScheme scheme, const LockedTable& table) noexcept;

/// The bytes of the memo file that are held while a memo is written. Programs disagree; both known places are
/// taken (byte 0, and byte 0x40000000 of a FoxPro memo).
LockRanges MemoLock(LockScheme scheme) noexcept;

/// The byte of the index file that is held, shared while a tree is read and alone while it is changed.
LockRange IndexLock(LockScheme scheme) noexcept;

}  // namespace zu::dbf::locking
