#include "tests/unit/dbf/TableImage.h"

#include <bit>
#include <span>

namespace zu::dbf {

std::string Little(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text.push_back(static_cast<char>(value >> (8 * i)));
    return text;
}

std::string Big(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = bytes; i-- > 0;)
        text.push_back(static_cast<char>(value >> (8 * i)));
    return text;
}

std::string DoubleBytes(double value) {
    return Little(std::bit_cast<std::uint64_t>(value), 8);
}

void Put(files::MemoryFiles& files, const std::string& path, std::string_view bytes) {
    files.Put(path, std::as_bytes(std::span(bytes)));
}

TableImage& TableImage::Field(std::string_view name, char type, int width, int decimals, int flags) {
    std::string descriptor(name);
    descriptor.resize(11);
    descriptor.push_back(type);
    descriptor += "junk";  // an address in files of dBASE
    descriptor += Little(static_cast<unsigned>(width), 1) + Little(static_cast<unsigned>(decimals), 1) +
                  Little(static_cast<unsigned>(flags), 1);
    descriptor.resize(32);
    descriptors_ += descriptor;
    widths_ += static_cast<unsigned>(width);
    return *this;
}

TableImage& TableImage::Record(std::string_view fields, char mark) {
    records_.push_back(mark);
    records_ += fields;
    ++count_;
    return *this;
}

TableImage& TableImage::Flags(int flags) {
    flags_ = flags;
    return *this;
}

TableImage& TableImage::Mark(int codePageMark) {
    mark_ = codePageMark;
    return *this;
}

TableImage& TableImage::Gap(std::size_t bytes) {
    gap_ = bytes;
    return *this;
}

TableImage& TableImage::EndMark(std::string_view bytes) {
    endMark_ = bytes;
    return *this;
}

TableImage& TableImage::Tail(std::string_view bytes) {
    tail_ = bytes;
    return *this;
}

TableImage& TableImage::StatedCount(std::uint32_t count) {
    statedCount_ = count;
    return *this;
}

TableImage& TableImage::StatedHeaderLength(unsigned length) {
    statedHeaderLength_ = length;
    return *this;
}

TableImage& TableImage::StatedRecordLength(unsigned length) {
    statedRecordLength_ = length;
    return *this;
}

TableImage& TableImage::Byte(std::size_t offset, int value) {
    bytes_.emplace_back(offset, value);
    return *this;
}

std::size_t TableImage::headerLength() const {
    return 32 + descriptors_.size() + endMark_.size() + gap_;
}

std::size_t TableImage::recordLength() const {
    return widths_ + 1;
}

std::string TableImage::Bytes() const {
    std::string bytes = Little(version_, 1) + "\x1A\x0B\x15" + Little(statedCount_.value_or(count_), 4) +
                        Little(statedHeaderLength_.value_or(static_cast<unsigned>(headerLength())), 2) +
                        Little(statedRecordLength_.value_or(static_cast<unsigned>(recordLength())), 2);
    bytes.resize(28);
    bytes += Little(static_cast<unsigned>(flags_), 1) + Little(static_cast<unsigned>(mark_), 1);
    bytes.resize(32);
    bytes += descriptors_ + endMark_;
    bytes.resize(bytes.size() + gap_);
    bytes += records_ + tail_;
    for (const auto& [offset, value] : bytes_)
        bytes.at(offset) = static_cast<char>(value);
    return bytes;
}

void TableImage::PutInto(files::MemoryFiles& files, const std::string& path) const {
    zu::dbf::Put(files, path, Bytes());
}

}  // namespace zu::dbf
