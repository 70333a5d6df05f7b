#include "portable/textio/Encoding.h"

namespace zu::textio {

namespace {

constexpr char kMissing = '?';
constexpr std::size_t kUnits = 0x10000;
constexpr char16_t kUndefined = 0xFFFD;

bool IsHighSurrogate(char16_t c) noexcept {
    return c >= 0xD800 && c < 0xDC00;
}

}  // namespace

Encoding::Encoding(const text::CodePage& page) : page_(page) {
    if (!page.isSingleByte()) return;
    bytes_.resize(kUnits);
    std::string all(256, '\0');
    for (std::size_t byte = 0; byte < all.size(); ++byte)
        all[byte] = static_cast<char>(byte);
    std::u16string characters;
    page.Decode(all, characters);
    for (std::size_t byte = characters.size(); byte-- > 0;) {
        if (characters[byte] != kUndefined) bytes_[characters[byte]] = static_cast<std::uint8_t>(byte);
    }
}

std::size_t Encoding::EncodeTo(std::u16string_view characters, char* out) const noexcept {
    std::size_t missing = 0;
    for (const char16_t c : characters) {
        const std::uint8_t byte = bytes_[c];
        const bool known = byte != 0 || c == 0;
        *out++ = known ? static_cast<char>(byte) : kMissing;
        missing += known ? 0 : 1;
    }
    return missing;
}

std::size_t Encoding::Append(std::u16string_view characters, std::string& out) const {
    if (isSingleByte()) {
        const std::size_t start = out.size();
        out.resize(start + characters.size());
        return EncodeTo(characters, out.data() + start);
    }
    std::size_t missing = 0;
    while (!characters.empty()) {
        std::size_t bad = characters.size();
        if (const auto bytes = page_.Encode(characters, &bad)) {
            out += *bytes;
            break;
        }
        if (bad >= characters.size()) bad = 0;
        if (const auto bytes = page_.Encode(characters.substr(0, bad))) out += *bytes;
        const bool pair = IsHighSurrogate(characters[bad]) && bad + 1 < characters.size();
        out += kMissing;
        ++missing;
        characters.remove_prefix(bad + (pair ? 2 : 1));
    }
    return missing;
}

std::string Encoding::Encode(std::u16string_view characters) const {
    std::string bytes;
    Append(characters, bytes);
    return bytes;
}

}  // namespace zu::textio
