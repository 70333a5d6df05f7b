#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "host/technologies/dbf/cdx/CdxFormat.h"

namespace zu::dbf::cdx {

using PageArray = std::array<std::byte, kPageSize>;

/// Text and bytes in tests.
inline const std::byte* AsBytes(std::string_view text) {
    return reinterpret_cast<const std::byte*>(text.data());
}
inline std::string AsText(const std::byte* bytes, std::size_t length) {
    return {reinterpret_cast<const char*>(bytes), length};
}
inline std::string Padded(std::string_view text, std::size_t length) {
    std::string padded(text);
    padded.resize(length, ' ');
    return padded;
}

}  // namespace zu::dbf::cdx
