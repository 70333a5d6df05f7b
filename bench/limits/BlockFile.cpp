#include "bench/limits/BlockFile.h"

#include <cstring>
#include <stdexcept>

namespace zu::bench {

BlockFile::BlockFile(const std::string& path)
    : file_(std::fopen(path.c_str(), "wb")), block_(kBlock + kRoom), at_(block_.data()) {
    if (!file_) throw std::runtime_error(path + " cannot be written");
    std::setvbuf(file_, nullptr, _IONBF, 0);
}

BlockFile::~BlockFile() {
    if (file_) std::fclose(file_);
}

void BlockFile::Flush() {
    const auto length = static_cast<std::size_t>(at_ - block_.data());
    if (std::fwrite(block_.data(), 1, length, file_) != length) throw std::runtime_error("the disk is full");
    at_ = block_.data();
}

void BlockFile::Write(const char* bytes, std::size_t length) {
    while (length != 0) {
        const std::size_t part = length < kRoom ? length : kRoom;
        std::memcpy(at_, bytes, part);
        Advance(at_ + part);
        bytes += part;
        length -= part;
    }
}

void BlockFile::Close() {
    Flush();
    const bool closed = std::fclose(file_) == 0;
    file_ = nullptr;
    if (!closed) throw std::runtime_error("the disk is full");
}

}  // namespace zu::bench
