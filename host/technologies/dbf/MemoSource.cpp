#include "host/technologies/dbf/MemoSource.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace zu::dbf {

MemoSource::MemoSource(std::unique_ptr<files::File> file) : file_(std::move(file)) {
    Refresh();
}

void MemoSource::Refresh() {
    size_ = file_->Size();
    mapping_ = file_->Map();
    if (mapping_) size_ = mapping_->bytes().size();
}

bool MemoSource::Reaches(std::uint64_t end) {
    if (end <= size_) return true;
    if (file_->Size() != size_) Refresh();
    return end <= size_;
}

bool MemoSource::Read(std::uint64_t offset, std::span<std::byte> buffer) const {
    if (offset > size_ || buffer.size() > size_ - offset) return false;
    if (buffer.empty()) return true;
    if (mapping_) {
        std::memcpy(buffer.data(), mapping_->bytes().data() + offset, buffer.size());
        return true;
    }
    return file_->ReadAt(offset, buffer) == buffer.size();
}

bool MemoSource::Read(std::uint64_t offset, std::uint64_t length, std::string& out) {
    out.clear();
    if (offset > size_ || length > size_ - offset || length > out.max_size()) return false;
    out.resize(static_cast<std::size_t>(length));
    return Read(offset, std::as_writable_bytes(std::span(out)));
}

void MemoSource::ReadUntil(std::uint64_t offset, std::byte terminator, std::string& out) {
    out.clear();
    std::array<std::byte, 512> piece{};
    while (offset < size_) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(piece.size(), size_ - offset));
        const std::span<std::byte> bytes(piece.data(), count);
        if (!Read(offset, bytes)) return;
        const auto end = std::find(bytes.begin(), bytes.end(), terminator);
        out.append(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::size_t>(end - bytes.begin()));
        if (end != bytes.end()) return;
        offset += count;
    }
}

}  // namespace zu::dbf
