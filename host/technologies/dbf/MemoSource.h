#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "portable/files/File.h"

namespace zu::dbf {

/// The bytes of a memo file, mapped where possible. Sees what other processes append.
class MemoSource {
public:
    explicit MemoSource(std::unique_ptr<files::File> file);

    const std::string& path() const noexcept { return file_->path(); }
    /// Bytes in the file as last seen.
    std::uint64_t size() const noexcept { return size_; }
    /// True when the file reaches up to `end`; looks again when it did not last time.
    bool Reaches(std::uint64_t end);
    /// Fills `buffer` from `offset`; false when the file ends before.
    bool Read(std::uint64_t offset, std::span<std::byte> buffer) const;
    /// Replaces `out` by `length` bytes from `offset`; false when the file ends before. Nothing is allocated
    /// for bytes that are not there.
    bool Read(std::uint64_t offset, std::uint64_t length, std::string& out);
    /// Replaces `out` by the bytes from `offset` up to `terminator` or the end of the file.
    void ReadUntil(std::uint64_t offset, std::byte terminator, std::string& out);

private:
    void Refresh();

    std::unique_ptr<files::File> file_;
    std::unique_ptr<files::Mapping> mapping_;
    std::uint64_t size_ = 0;
};

}  // namespace zu::dbf
