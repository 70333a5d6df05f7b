#include "portable/text/Utf8Set.h"

#include "portable/text/AsciiCase.h"
#include "portable/text/Utf.h"

namespace zu::text {

Utf8Set::Utf8Set() : upper_(AsciiUpperTable()), lower_(AsciiLowerTable()) {}

void Utf8Set::Decode(std::string_view bytes, std::u16string& out) const {
    out += ToUtf16(bytes);
}

std::optional<std::string> Utf8Set::Encode(std::u16string_view characters, std::size_t* firstBad) const {
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const bool high = characters[i] >= 0xD800 && characters[i] <= 0xDBFF;
        const bool low = characters[i] >= 0xDC00 && characters[i] <= 0xDFFF;
        const bool paired =
            high && i + 1 < characters.size() && characters[i + 1] >= 0xDC00 && characters[i + 1] <= 0xDFFF;
        if (low || (high && !paired)) {
            if (firstBad) *firstBad = i;
            return std::nullopt;
        }
        if (paired) ++i;
    }
    return ToUtf8(characters);
}

}  // namespace zu::text
