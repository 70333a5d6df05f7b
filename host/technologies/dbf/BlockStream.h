#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "portable/files/File.h"

namespace zu::dbf {

/// Writes a file from front to back in blocks of about a megabyte.
class BlockStream {
public:
    explicit BlockStream(std::unique_ptr<files::File> file);

    void Append(std::span<const std::byte> bytes);
    void AppendZeros(std::size_t count);
    /// Bytes appended so far.
    std::uint64_t position() const noexcept { return written_ + block_.size(); }
    /// Hands everything to the file.
    void Drain();
    /// The file, for changes behind the stream's back after Drain.
    files::File& file() noexcept { return *file_; }

private:
    std::unique_ptr<files::File> file_;
    std::vector<std::byte> block_;
    std::uint64_t written_ = 0;
};

}  // namespace zu::dbf
