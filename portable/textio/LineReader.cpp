#include "portable/textio/LineReader.h"

#include <cstring>
#include <string>
#include <utility>

#include "portable/error/Error.h"
#include "portable/text/ByteWords.h"

namespace zu::textio {

namespace {

constexpr std::size_t kLongestLine = 256U * 1024 * 1024;
constexpr char kEndOfText = '\x1A';

}  // namespace

LineReader::LineReader(std::unique_ptr<files::File> file, std::size_t block)
    : file_(std::move(file)), block_(block), buffer_(block) {}

bool LineReader::ReadOn() {
    if (ended_) return false;
    if (begin_ != 0) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        searched_ -= begin_;
        end_ -= begin_;
        begin_ = 0;
    }
    if (end_ > kLongestLine)
        throw Error(ErrorKind::Damaged, "The text file " + file_->path() + " has a line of more than " +
                                            std::to_string(kLongestLine) + " characters before byte " +
                                            std::to_string(offset_));
    if (buffer_.size() - end_ < block_) buffer_.resize(end_ < block_ ? 2 * block_ : 2 * end_);
    const std::size_t read = file_->ReadAt(
        offset_, std::as_writable_bytes(std::span(buffer_.data() + end_, buffer_.size() - end_)));
    offset_ += read;
    end_ += read;
    if (read == 0) ended_ = true;
    return read != 0;
}

const char* LineReader::FindLineEnd() noexcept {
    while (searched_ < end_) {
        const char* const data = buffer_.data();
        const char* const feed = text::FindByte(data + searched_, data + end_, '\n');
        if (feed == data + end_) {
            searched_ = end_;
            return nullptr;
        }
        const bool both = feed != data + begin_ && feed[-1] == '\r';
        if (lineEnd_ == LineEnd::Unknown) lineEnd_ = both ? LineEnd::Both : LineEnd::LineFeed;
        searched_ = static_cast<std::size_t>(feed - data) + 1;
        if (both || lineEnd_ == LineEnd::LineFeed) return feed;
    }
    return nullptr;
}

bool LineReader::TakeLast(std::string_view& line) noexcept {
    while (end_ > begin_ && buffer_[end_ - 1] == kEndOfText)
        --end_;
    if (begin_ == end_) return false;
    line = {buffer_.data() + begin_, end_ - begin_};
    begin_ = end_;
    searched_ = end_;
    return true;
}

bool LineReader::Next(std::string_view& line) {
    for (;;) {
        if (const char* const feed = FindLineEnd()) {
            const char* const first = buffer_.data() + begin_;
            line = {first, static_cast<std::size_t>(feed - first) - (lineEnd_ == LineEnd::Both ? 1 : 0)};
            begin_ = searched_;
            return true;
        }
        if (!ReadOn()) return TakeLast(line);
    }
}

}  // namespace zu::textio
