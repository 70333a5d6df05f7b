#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/expression/Program.h"
#include "host/technologies/dbf/DbfHeader.h"
#include "host/technologies/dbf/RecordAccess.h"
#include "portable/files/File.h"

namespace zu::dbf {

/// The records of a table file in memory: the file mapped whole where the system can, else blocks of about a
/// megabyte that are read as they are needed. No access to a record costs a system call of its own.
///
/// The number of records is what the file really holds, not what its header says: whole records only, and
/// records behind the stated number only as far as each begins with a deletion mark.
class RecordFile final : public RecordAccess {
public:
    /// `memos` may be null. Errors: those of `file`.
    RecordFile(std::unique_ptr<files::File> file, const DbfHeader& header);

    void SetMemos(expression::MemoReader* memos) noexcept { memos_ = memos; }

    const std::string& path() const noexcept { return file_->path(); }

    /// Takes the file as it is now: other processes may have appended, changed or cut it. Answers whether its
    /// size or its stated number of records is another one than before.
    bool Refresh();
    /// As Refresh, but keeps blocks in memory as long as size and stated number are the same.
    bool NoticeGrowth();

    /// The file is in memory and has the size and the stated number of records that it had at the last
    /// Refresh, which has met no records of others that nobody was told of. The number is read each time, the
    /// size asked for once in a millisecond: writers step the number when a record is whole.
    bool IsAsBefore();

    /// The record is to be read anew: it was changed, or must be seen as it is now.
    void Forget(std::uint32_t number) noexcept {
        if (mapped_ || number == 0) return;
        const std::uint32_t block = (number - 1) / recordsPerBlock_;
        if (blocks_[block % blocks_.size()].number == block)
            blocks_[block % blocks_.size()].number = UINT32_MAX;
    }

    /// The record's fields will be read soon. Its beginning is in the cache already; of the rest, as far as
    /// it is likely to matter, the memory is asked now, so that nobody waits for it then.
    void Expect(std::uint32_t number) const noexcept {
        if (!mapped_) return;
        constexpr std::size_t kCacheLine = 64;
        constexpr std::size_t kFarthest = 4 * kCacheLine;
        const std::byte* const record = mapped_ + static_cast<std::size_t>(number - 1) * recordLength_;
        const std::size_t end = std::min<std::size_t>(recordLength_, kFarthest);
        for (std::size_t at = kCacheLine; at < end; at += kCacheLine)
            __builtin_prefetch(record + at);
        __builtin_prefetch(record + end - 1);
    }

    /// This process has added records up to `number` itself.
    void NoteOwnRecords(std::uint32_t number) noexcept { known_ = number; }
    /// The last record that this process knows of, by reading or because it added it.
    std::uint32_t known() const noexcept { return known_; }
    /// Since this was asked last, a Refresh has met records that this process did not know of, or missed some
    /// that it did.
    bool TakeForeignRecords() noexcept { return std::exchange(hasForeignRecords_, false); }
    /// Until the next Refresh there seem to be at most `count` records.
    void LimitTo(std::uint32_t count) noexcept { count_ = count < count_ ? count : count_; }

    /// Records stay where they are until the next Refresh.
    bool isMapped() const noexcept { return mapped_ != nullptr; }

    /// As of the last Refresh.
    std::uint32_t Count() override { return count_; }
    /// Damaged when another process has cut the file meanwhile.
    const std::byte* Record(std::uint32_t number) override {
        if (number - 1 >= count_) return nullptr;
        if (mapped_) return mapped_ + static_cast<std::size_t>(number - 1) * recordLength_;
        return BlockRecord(number);
    }
    bool areStable() const noexcept override { return isMapped(); }
    expression::MemoReader* memos() override { return memos_; }

    /// The records from `first` (one-based, at most Count()) that lie in memory one behind the other, at most
    /// `most`, at least one. Valid until the next call of any member.
    expression::RecordRun Run(std::uint32_t first, std::uint32_t most);

    /// The bytes before the first record, as they are in the file now. Damaged when the file is shorter.
    std::vector<std::byte> HeaderBytes() const;

    /// What the header said at the last Refresh.
    std::uint32_t statedCount() const noexcept { return statedCount_; }

private:
    using Clock = std::chrono::steady_clock;

    struct Block {
        std::uint32_t number = UINT32_MAX;
        std::vector<std::byte> bytes;
    };

    std::uint32_t ReadStatedCount() const;
    bool HasSameSize();
    std::uint32_t CountFrom(std::uint32_t known, std::uint32_t whole);
    const std::byte* BlockRecord(std::uint32_t number);
    const Block& Load(std::uint32_t block);

    std::unique_ptr<files::File> file_;
    std::unique_ptr<files::Mapping> mapping_;
    expression::MemoReader* memos_ = nullptr;
    std::uint32_t headerLength_;
    std::uint32_t recordLength_;
    const std::byte* mapped_ = nullptr;  ///< the first record
    std::uint32_t count_ = 0;
    std::uint32_t statedCount_ = 0;
    std::uint32_t known_ = 0;
    bool hasForeignRecords_ = false;
    std::uint64_t size_ = 0;
    Clock::time_point sizeAsked_;
    std::uint32_t recordsPerBlock_;
    std::array<Block, 8> blocks_;
};

}  // namespace zu::dbf
