#include "portable/text/DoubleByteSet.h"

#include "portable/text/AsciiCase.h"

namespace zu::text {

namespace {

bool IsAscii(std::string_view bytes) noexcept {
    for (const char byte : bytes) {
        if (static_cast<std::uint8_t>(byte) >= 0x80) return false;
    }
    return true;
}

}  // namespace

DoubleByteSet::DoubleByteSet(unsigned number)
    : number_(number), upper_(AsciiUpperTable()), lower_(AsciiLowerTable()) {}

void DoubleByteSet::Decode(std::string_view bytes, std::u16string& out) const {
    if (IsAscii(bytes)) {
        out.append(bytes.begin(), bytes.end());
        return;
    }
    if (const auto converter = MakeDoubleByteConverter(number_)) {
        converter->Decode(bytes, out);
        return;
    }
    for (const char byte : bytes) {
        const auto value = static_cast<std::uint8_t>(byte);
        out.push_back(value < 0x80 ? static_cast<char16_t>(value) : u'\uFFFD');
    }
}

std::optional<std::string> DoubleByteSet::Encode(std::u16string_view characters,
                                                 std::size_t* firstBad) const {
    std::string bytes;
    bytes.reserve(characters.size() * 2);
    std::size_t bad = 0;
    while (bad < characters.size() && characters[bad] < 0x80)
        bytes.push_back(static_cast<char>(characters[bad++]));
    if (bad == characters.size()) return bytes;
    bytes.clear();
    const auto converter = MakeDoubleByteConverter(number_);
    if (converter && converter->Encode(characters, bytes, bad)) return bytes;
    if (firstBad) *firstBad = bad;
    return std::nullopt;
}

}  // namespace zu::text
