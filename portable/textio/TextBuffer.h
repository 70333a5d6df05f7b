#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace zu::textio {

/// Characters that grow at the end, for many short additions: room is asked for and written to in place.
template <class Char>
class TextBuffer {
public:
    /// `count` characters of room at the end, which belong to the content from now on.
    Char* Extend(std::size_t count) {
        if (count > capacity_ - size_) Grow(count);
        Char* const at = data_.get() + size_;
        size_ += count;
        return at;
    }
    void Append(std::basic_string_view<Char> text) {
        if (!text.empty()) std::memcpy(Extend(text.size()), text.data(), text.size() * sizeof(Char));
    }
    void Append(std::size_t count, Char character) {
        Char* at = Extend(count);
        for (std::size_t i = 0; i < count; ++i)
            at[i] = character;
    }
    void Append(Char character) { *Extend(1) = character; }

    std::basic_string_view<Char> view() const noexcept { return {data_.get(), size_}; }
    std::size_t size() const noexcept { return size_; }
    void Clear() noexcept { size_ = 0; }
    /// Gives up what stands behind the first `size` characters.
    void Shrink(std::size_t size) noexcept { size_ = size; }

private:
    void Grow(std::size_t count) {
        std::size_t wanted = capacity_ < 256 ? 256 : capacity_ * 2;
        if (wanted < size_ + count) wanted = size_ + count;
        std::unique_ptr<Char[]> grown(new Char[wanted]);
        if (size_ != 0) std::memcpy(grown.get(), data_.get(), size_ * sizeof(Char));
        data_ = std::move(grown);
        capacity_ = wanted;
    }

    std::unique_ptr<Char[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace zu::textio
