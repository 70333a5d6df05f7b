#pragma once

#include <cstddef>
#include <string>

namespace zu::bench {

/// A file mapped into memory for reading.
class InputFile {
public:
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const char* begin() const noexcept { return bytes_; }
    const char* end() const noexcept { return bytes_ + length_; }

private:
    const char* bytes_ = nullptr;
    std::size_t length_ = 0;
};

}  // namespace zu::bench
