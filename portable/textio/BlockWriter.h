#pragma once

#include <cstdint>
#include <memory>

#include "portable/files/File.h"
#include "portable/textio/TextBuffer.h"

namespace zu::textio {

/// Writes a text file from its beginning in large blocks. Failures are Errors that name the file.
class BlockWriter {
public:
    explicit BlockWriter(std::unique_ptr<files::File> file) : file_(std::move(file)) {}

    /// What comes next is added here.
    TextBuffer<char>& buffer() noexcept { return buffer_; }
    /// Writes the buffer when it holds a block. Called once a line.
    void LineDone() {
        if (buffer_.size() >= kBlock) Flush();
    }
    /// Writes what the buffer holds.
    void Flush();

    static constexpr std::size_t kBlock = 1024 * 1024;

private:
    std::unique_ptr<files::File> file_;
    std::uint64_t offset_ = 0;
    TextBuffer<char> buffer_;
};

}  // namespace zu::textio
