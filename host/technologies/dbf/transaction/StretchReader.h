#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "portable/files/File.h"

namespace zu::dbf::transaction {

/// Fills `buffer` with the bytes at `offset`; IoFailure when the file ends before.
void ReadFully(const files::File& file, std::uint64_t offset, std::span<std::byte> buffer);

/// Reads many short pieces of a file. Pieces that follow each other closely, upwards or downwards, come from
/// one reading of a stretch of 64 KB, which is kept: nobody else may write there as long as the reader is in
/// use.
class StretchReader {
public:
    /// `file` must outlive the reader; it has `size` bytes.
    StretchReader(const files::File& file, std::uint64_t size) noexcept : file_(file), size_(size) {}

    std::uint64_t size() const noexcept { return size_; }

    /// Reads the bytes at `offset`, which must lie within the size; the piece after this one begins at
    /// `next`. IoFailure when the file has become shorter.
    void Read(std::uint64_t offset, std::span<std::byte> piece, std::uint64_t next);

private:
    const files::File& file_;
    std::uint64_t size_;
    std::uint64_t begin_ = 0;  ///< of the stretch
    std::vector<std::byte> stretch_;
};

}  // namespace zu::dbf::transaction
