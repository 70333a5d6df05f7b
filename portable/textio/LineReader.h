#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "portable/files/File.h"

namespace zu::textio {

/// Reads a text file of any size line by line, in blocks.
///
/// A file whose first line end is a lone LF has LF as its line end; in every other file lines end with CR LF
/// only, and a lone LF belongs to its line. The last line needs no end. 0x1A at the very end of the file,
/// which old programs leave there, belongs to no line. Failures are Errors that name the file.
class LineReader {
public:
    /// `block`: bytes that are read at a time.
    explicit LineReader(std::unique_ptr<files::File> file, std::size_t block = kBlock);

    /// The next line without its end, valid until the next call; false after the last one. A line of more
    /// than a quarter of a gigabyte is a Damaged error.
    bool Next(std::string_view& line);

    static constexpr std::size_t kBlock = 1024 * 1024;

private:
    enum class LineEnd : unsigned char { Unknown, LineFeed, Both };

    /// Reads on behind what is there; false at the end of the file.
    bool ReadOn();
    /// Where the line from `begin_` ends, searched from `searched_` on; null when it does not end yet.
    const char* FindLineEnd() noexcept;
    bool TakeLast(std::string_view& line) noexcept;

    std::unique_ptr<files::File> file_;
    std::uint64_t offset_ = 0;
    std::size_t block_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t searched_ = 0;
    std::size_t end_ = 0;
    bool ended_ = false;
    LineEnd lineEnd_ = LineEnd::Unknown;
};

}  // namespace zu::textio
