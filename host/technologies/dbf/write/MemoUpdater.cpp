#include "host/technologies/dbf/write/MemoUpdater.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "host/technologies/dbf/Dbt4Memo.h"
#include "host/technologies/dbf/FptMemo.h"
#include "portable/error/Error.h"

namespace zu::dbf::write {
namespace {

using transaction::ChangeSet;
using transaction::Part;

// Fields of 10 digits and of 4 bytes both reach this far.
constexpr std::uint64_t kHighestBlock = 0x7FFFFFFF;
constexpr std::uint32_t kDbt3BlockSize = 512;
constexpr std::uint32_t kDbt4UsedBlock = 0x0008FFFF;

std::span<const std::byte> BytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

// What the three formats have in common: a count of blocks in the first four bytes, blocks of one size.
class BlockWriter : public MemoUpdater {
public:
    BlockWriter(const files::File& file, std::uint32_t blockSize, std::uint32_t firstBlock)
        : file_(file), blockSize_(blockSize), firstBlock_(firstBlock) {}

    std::uint32_t Store(std::string_view content, MemoContent kind, std::uint32_t oldBlock,
                        ChangeSet& changes) override {
        RequireStorable(content);
        const std::uint64_t needed = Blocks(content.size() + overhead());
        std::uint64_t block = oldBlock;
        if (oldBlock < firstBlock_ || BlocksAt(oldBlock).value_or(0) < needed) {
            block = NextFree(changes);
            const std::uint64_t next = block + needed;
            if (next > kHighestBlock)
                throw Error(ErrorKind::Overflow, "The memo file " + file_.path() + " is full.");
            next_ = next;
            std::array<std::byte, 4> bytes{};
            StoreNextFree(bytes.data(), static_cast<std::uint32_t>(next));
            changes.Write(Part::Memo, 0, bytes);
        }
        buffer_.assign(static_cast<std::size_t>(needed) * blockSize_, std::byte{0});
        Fill(content, kind, buffer_.data());
        changes.Write(Part::Memo, block * blockSize_, buffer_);
        return static_cast<std::uint32_t>(block);
    }

    void CountBlocks(ChangeSet& changes) override {
        std::array<std::byte, 4> bytes{};
        StoreNextFree(bytes.data(), static_cast<std::uint32_t>(NextFree(changes)));
        changes.Write(Part::Memo, 0, bytes);
    }

protected:
    /// Bytes that are stored besides the content.
    virtual std::size_t overhead() const noexcept = 0;
    virtual void RequireStorable(std::string_view) const {}
    virtual void Fill(std::string_view content, MemoContent kind, std::byte* out) const = 0;
    /// The blocks that the content at `block` has now; nothing when there is no sound content.
    virtual std::optional<std::uint64_t> BlocksAt(std::uint32_t block) const = 0;
    virtual void StoreNextFree(std::byte* at, std::uint32_t block) const noexcept = 0;

    std::uint64_t Blocks(std::uint64_t bytes) const noexcept { return (bytes + blockSize_ - 1) / blockSize_; }
    bool ReadAt(std::uint64_t offset, std::span<std::byte> buffer) const {
        return file_.ReadAt(offset, buffer) == buffer.size();
    }
    /// The blocks of `length` bytes of content, when they lie inside the file.
    std::optional<std::uint64_t> Inside(std::uint32_t block, std::uint64_t length) const {
        const std::uint64_t end = std::uint64_t{block} * blockSize_ + overhead() + length;
        if (end > file_.Size()) return std::nullopt;
        return Blocks(overhead() + length);
    }

    const files::File& file_;
    std::uint32_t blockSize_;
    std::uint32_t firstBlock_;

private:
    // The size of the file says which blocks are free, not the header: one that counts too few must not lead
    // to contents being overwritten, and one that counts too many not to a file full of nothing.
    std::uint64_t NextFree(const ChangeSet& changes) {
        if (next_ != 0) return next_;
        std::array<std::byte, 4> bytes{};
        if (!ReadAt(0, bytes))
            throw Error(ErrorKind::Damaged, "The memo file " + file_.path() + " has no header.");
        const std::uint64_t used = Blocks(changes.SizeAfter(Part::Memo, file_.Size()));
        next_ = std::max(used, std::uint64_t{firstBlock_});
        return next_;
    }

    std::uint64_t next_ = 0;  ///< the first free block, once it is known
    std::vector<std::byte> buffer_;
};

class FptWriter final : public BlockWriter {
public:
    FptWriter(const files::File& file, std::uint32_t blockSize)
        : BlockWriter(file, blockSize, (fpt::kHeaderSize + blockSize - 1) / blockSize) {}

private:
    std::size_t overhead() const noexcept override { return fpt::kBlockHeader; }
    void RequireStorable(std::string_view content) const override {
        if (content.size() > 0x7FFFFFFF - fpt::kBlockHeader)
            throw Error(ErrorKind::Overflow,
                        "A memo of 2 GB or more does not fit into " + file_.path() + ".");
    }
    void Fill(std::string_view content, MemoContent kind, std::byte* out) const override {
        StoreBig32(out, kind == MemoContent::Text ? fpt::kText : 0);
        StoreBig32(out + 4, static_cast<std::uint32_t>(content.size()));
        std::ranges::copy(BytesOf(content), out + fpt::kBlockHeader);
    }
    std::optional<std::uint64_t> BlocksAt(std::uint32_t block) const override {
        std::array<std::byte, fpt::kBlockHeader> start{};
        if (!ReadAt(std::uint64_t{block} * blockSize_, start) || LoadBig32(start.data()) > fpt::kHighestKind)
            return std::nullopt;
        return Inside(block, LoadBig32(start.data() + 4));
    }
    void StoreNextFree(std::byte* at, std::uint32_t block) const noexcept override { StoreBig32(at, block); }
};

class Dbt4Writer final : public BlockWriter {
public:
    Dbt4Writer(const files::File& file, std::uint32_t blockSize) : BlockWriter(file, blockSize, 1) {}

private:
    static constexpr std::size_t kBlockHeader = 8;

    std::size_t overhead() const noexcept override { return kBlockHeader; }
    void Fill(std::string_view content, MemoContent, std::byte* out) const override {
        StoreLittle<std::uint32_t>(out, kDbt4UsedBlock);
        StoreLittle<std::uint32_t>(out + 4, static_cast<std::uint32_t>(content.size() + kBlockHeader));
        std::ranges::copy(BytesOf(content), out + kBlockHeader);
    }
    std::optional<std::uint64_t> BlocksAt(std::uint32_t block) const override {
        std::array<std::byte, kBlockHeader> start{};
        if (!ReadAt(std::uint64_t{block} * blockSize_, start)) return std::nullopt;
        if (LoadLittle<std::uint32_t>(start.data()) != kDbt4UsedBlock) return std::nullopt;
        // Some writers state the length without these eight bytes: then the content reaches one block less
        // far than it could, which is only a little space lost.
        const auto stated = LoadLittle<std::uint32_t>(start.data() + 4);
        return Inside(block, stated - std::min<std::uint32_t>(stated, kBlockHeader));
    }
    void StoreNextFree(std::byte* at, std::uint32_t block) const noexcept override { StoreLittle(at, block); }
};

class Dbt3Writer final : public BlockWriter {
public:
    explicit Dbt3Writer(const files::File& file) : BlockWriter(file, kDbt3BlockSize, 1) {}

private:
    std::size_t overhead() const noexcept override { return 2; }
    void RequireStorable(std::string_view content) const override {
        if (content.find(static_cast<char>(kEndOfFile)) != std::string_view::npos)
            throw Error(ErrorKind::InvalidArgument,
                        "A text with the character 26 cannot be kept in the memo file " + file_.path() +
                            ": there it marks the end of a text.");
    }
    void Fill(std::string_view content, MemoContent, std::byte* out) const override {
        std::ranges::copy(BytesOf(content), out);
        out[content.size()] = std::byte{kEndOfFile};
        out[content.size() + 1] = std::byte{kEndOfFile};
    }
    std::optional<std::uint64_t> BlocksAt(std::uint32_t block) const override {
        std::array<std::byte, kDbt3BlockSize> bytes{};
        const std::uint64_t start = std::uint64_t{block} * blockSize_;
        for (std::uint64_t offset = start;; offset += bytes.size()) {
            const std::size_t got = file_.ReadAt(offset, bytes);
            const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(got);
            const auto mark = std::find(bytes.begin(), end, std::byte{kEndOfFile});
            if (mark != end)
                return Blocks(offset - start + static_cast<std::uint64_t>(mark - bytes.begin()) + overhead());
            // A text without an end reaches into what follows it; its blocks are not surely its own.
            if (got < bytes.size()) return std::nullopt;
        }
    }
    void StoreNextFree(std::byte* at, std::uint32_t block) const noexcept override { StoreLittle(at, block); }
};

std::uint32_t BlockSize(const files::File& file, std::size_t offset, bool bigEndian) {
    std::array<std::byte, 2> bytes{};
    if (file.ReadAt(offset, bytes) != bytes.size())
        throw Error(ErrorKind::Damaged, "The memo file " + file.path() + " has no header.");
    if (bigEndian) std::swap(bytes[0], bytes[1]);
    return LoadLittle<std::uint16_t>(bytes.data());
}

}  // namespace

std::unique_ptr<MemoUpdater> MemoUpdater::Open(const files::File& file, MemoFormat format) {
    switch (format) {
        case MemoFormat::Dbt3:
            return std::make_unique<Dbt3Writer>(file);
        case MemoFormat::Dbt4: {
            const std::uint32_t stated = BlockSize(file, Dbt4Memo::kBlockSizeOffset, false);
            return std::make_unique<Dbt4Writer>(file, stated != 0 ? stated : Dbt4Memo::kUsualBlockSize);
        }
        case MemoFormat::Fpt: {
            const std::uint32_t stated = BlockSize(file, fpt::kBlockSize, true);
            if (stated == 0)
                throw Error(ErrorKind::Damaged, "The memo file " + file.path() + " states the block size 0.");
            return std::make_unique<FptWriter>(file, stated);
        }
        default:
            throw Error(ErrorKind::Unsupported, "Memo files such as " + file.path() + " are not written.");
    }
}

}  // namespace zu::dbf::write
