#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace zu::bench {

/// A file that is written from its beginning in blocks of a megabyte.
class BlockFile {
public:
    explicit BlockFile(const std::string& path);
    ~BlockFile();
    BlockFile(const BlockFile&) = delete;
    BlockFile& operator=(const BlockFile&) = delete;

    /// Where up to kRoom bytes may be written before the next Advance.
    char* position() noexcept { return at_; }
    /// The bytes up to `end` belong to the file.
    void Advance(char* end) {
        at_ = end;
        if (at_ - block_.data() >= static_cast<std::ptrdiff_t>(kBlock)) Flush();
    }
    void Write(const char* bytes, std::size_t length);
    /// Writes what is left and closes the file.
    void Close();

    static constexpr std::size_t kBlock = std::size_t{1} << 20;
    static constexpr std::size_t kRoom = std::size_t{64} << 10;

private:
    void Flush();

    std::FILE* file_;
    std::vector<char> block_;
    char* at_;
};

}  // namespace zu::bench
