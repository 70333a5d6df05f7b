#pragma once

#include <string>
#include <string_view>

namespace zu::text {

/// Conversions between UTF-16 and UTF-8. Ill-formed input becomes U+FFFD; nothing throws but for memory.
std::string ToUtf8(std::u16string_view characters);
std::u16string ToUtf16(std::string_view utf8);

}  // namespace zu::text
