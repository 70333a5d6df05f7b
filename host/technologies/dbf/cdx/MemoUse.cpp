#include "host/technologies/dbf/cdx/MemoUse.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "portable/text/CaseMap.h"
#include "portable/text/Utf.h"

namespace zu::dbf::cdx {
namespace {

bool IsWordByte(char c) noexcept {
    return c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

// The canonical text of an expression has all names in capital letters.
bool HasWord(std::string_view text, std::string_view word) noexcept {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || !IsWordByte(text[at - 1])) && (end == text.size() || !IsWordByte(text[end])))
            return true;
    }
    return false;
}

}  // namespace

bool ReadsMemos(const expression::Program& program, const expression::RecordLayout& layout) {
    return std::any_of(layout.fields.begin(), layout.fields.end(), [&](const expression::FieldLayout& field) {
        if (field.storage != expression::Storage::Memo || field.name.empty()) return false;
        std::u16string name = text::ToUtf16(field.name);
        std::transform(name.begin(), name.end(), name.begin(), [](char16_t c) { return text::ToUpper(c); });
        return HasWord(program.canonical(), text::ToUtf8(name));
    });
}

}  // namespace zu::dbf::cdx
