#include "portable/text/SingleByteSet.h"

#include <algorithm>

#include "portable/text/CaseMap.h"

namespace zu::text {

namespace {
constexpr char16_t kUndefined = 0xFFFD;
}

SingleByteSet::SingleByteSet(const SingleByteTable& table) : number_(table.number) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        characters_[byte] = byte < 0x80 ? static_cast<char16_t>(byte) : table.high[byte - 0x80];
        if (byte >= 0x80 && characters_[byte] != kUndefined) {
            byCharacter_.push_back({characters_[byte], static_cast<std::uint8_t>(byte)});
        }
    }
    std::sort(byCharacter_.begin(), byCharacter_.end(),
              [](const Entry& a, const Entry& b) { return a.character < b.character; });
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::uint8_t up = ByteOf(ToUpper(characters_[byte]));
        const std::uint8_t down = ByteOf(ToLower(characters_[byte]));
        upper_[byte] = up != 0 ? up : static_cast<std::uint8_t>(byte);
        lower_[byte] = down != 0 ? down : static_cast<std::uint8_t>(byte);
    }
}

std::uint8_t SingleByteSet::ByteOf(char16_t character) const noexcept {
    if (character < 0x80) return static_cast<std::uint8_t>(character);
    const auto found =
        std::lower_bound(byCharacter_.begin(), byCharacter_.end(), character,
                         [](const Entry& entry, char16_t sought) { return entry.character < sought; });
    return found != byCharacter_.end() && found->character == character ? found->byte : std::uint8_t{0};
}

void SingleByteSet::Decode(std::string_view bytes, std::u16string& out) const {
    const std::size_t start = out.size();
    out.resize(start + bytes.size());
    char16_t* target = out.data() + start;
    for (const char byte : bytes)
        *target++ = characters_[static_cast<std::uint8_t>(byte)];
}

std::optional<std::string> SingleByteSet::Encode(std::u16string_view characters,
                                                 std::size_t* firstBad) const {
    std::string bytes(characters.size(), '\0');
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const std::uint8_t byte = ByteOf(characters[i]);
        if (byte == 0 && characters[i] != 0) {
            if (firstBad) *firstBad = i;
            return std::nullopt;
        }
        bytes[i] = static_cast<char>(byte);
    }
    return bytes;
}

}  // namespace zu::text
