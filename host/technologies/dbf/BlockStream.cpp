#include "host/technologies/dbf/BlockStream.h"

namespace zu::dbf {

namespace {
constexpr std::size_t kBlock = 1U << 20;
}

BlockStream::BlockStream(std::unique_ptr<files::File> file) : file_(std::move(file)) {
    block_.reserve(kBlock);
}

void BlockStream::Append(std::span<const std::byte> bytes) {
    if (block_.size() + bytes.size() > kBlock) Drain();
    if (bytes.size() > kBlock) {
        file_->WriteAt(written_, bytes);
        written_ += bytes.size();
        return;
    }
    block_.insert(block_.end(), bytes.begin(), bytes.end());
}

void BlockStream::AppendZeros(std::size_t count) {
    block_.resize(block_.size() + count);
}

void BlockStream::Drain() {
    if (block_.empty()) return;
    file_->WriteAt(written_, block_);
    written_ += block_.size();
    block_.clear();
}

}  // namespace zu::dbf
