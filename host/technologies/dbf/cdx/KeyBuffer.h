#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <span>

#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

/// A key of at most kMaxKeyLength bytes, kept without the heap. Nothing is there until a key is.
class KeyBuffer {
public:
    KeyBuffer() noexcept = default;
    KeyBuffer(std::size_t length, std::byte fill) noexcept : length_(length) {
        std::memset(bytes_.data(), std::to_integer<int>(fill), length);
    }
    explicit KeyBuffer(std::span<const std::byte> key) noexcept { Take(key); }
    KeyBuffer(const KeyBuffer& other) noexcept { Take(other.span()); }
    KeyBuffer& operator=(const KeyBuffer& other) noexcept {
        if (this != &other) Take(other.span());
        return *this;
    }
    ~KeyBuffer() = default;

    std::size_t size() const noexcept { return length_; }
    bool empty() const noexcept { return length_ == 0; }
    std::byte* data() noexcept { return bytes_.data(); }
    const std::byte* data() const noexcept { return bytes_.data(); }
    std::span<const std::byte> span() const noexcept { return {bytes_.data(), length_}; }

    bool operator==(const KeyBuffer& other) const noexcept {
        return length_ == other.length_ && std::memcmp(data(), other.data(), length_) == 0;
    }

private:
    void Take(std::span<const std::byte> key) noexcept {
        length_ = key.size();
        std::memcpy(bytes_.data(), key.data(), length_);
    }

    std::size_t length_ = 0;
    std::array<std::byte, kMaxKeyLength> bytes_;  ///< copied and compared as far as the key goes
};

}  // namespace zu::dbf::cdx
