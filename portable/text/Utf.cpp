#include "portable/text/Utf.h"

#include <cstdint>

namespace zu::text {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(char32_t point, std::string& out) {
    if (point < 0x80) {
        out.push_back(static_cast<char>(point));
    } else if (point < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (point >> 6)));
        out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
    } else if (point < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (point >> 12)));
        out.push_back(static_cast<char>(0x80 | ((point >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (point >> 18)));
        out.push_back(static_cast<char>(0x80 | ((point >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((point >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
    }
}

void AppendUtf16(char32_t point, std::u16string& out) {
    if (point < 0x10000) {
        out.push_back(static_cast<char16_t>(point));
    } else {
        out.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
    }
}

struct LeadByte {
    unsigned following;  ///< continuation bytes
    char32_t bits;
    char32_t least;  ///< smaller values are overlong forms
};

bool ReadLead(std::uint8_t byte, LeadByte& lead) noexcept {
    if (byte >= 0xC2 && byte <= 0xDF) {
        lead = {1, static_cast<char32_t>(byte & 0x1F), 0x80};
    } else if (byte >= 0xE0 && byte <= 0xEF) {
        lead = {2, static_cast<char32_t>(byte & 0x0F), 0x800};
    } else if (byte >= 0xF0 && byte <= 0xF4) {
        lead = {3, static_cast<char32_t>(byte & 0x07), 0x10000};
    } else {
        return false;
    }
    return true;
}

/// Reads one character at `at` and moves `at` behind it. Ill-formed bytes give the replacement character, one
/// for each longest piece that could have begun a character, as the Unicode standard recommends.
char32_t NextOfUtf8(std::string_view utf8, std::size_t& at) noexcept {
    const auto first = static_cast<std::uint8_t>(utf8[at++]);
    if (first < 0x80) return first;
    LeadByte lead{};
    if (!ReadLead(first, lead)) return kReplacement;
    char32_t point = lead.bits;
    for (unsigned i = 0; i < lead.following; ++i) {
        if (at == utf8.size()) return kReplacement;
        const auto byte = static_cast<std::uint8_t>(utf8[at]);
        if ((byte & 0xC0) != 0x80) return kReplacement;
        if (i == 0) {
            // The second byte already shows overlong forms, surrogates and values beyond U+10FFFF.
            const char32_t two = ((point << 6) | (byte & 0x3F)) << (6 * (lead.following - 1));
            const char32_t end = two | ((char32_t{1} << (6 * (lead.following - 1))) - 1);
            if (end < lead.least || two > 0x10FFFF ||
                (lead.following == 2 && two >= 0xD800 && two < 0xE000)) {
                return kReplacement;
            }
        }
        point = (point << 6) | (byte & 0x3F);
        ++at;
    }
    return point;
}

}  // namespace

std::string ToUtf8(std::u16string_view characters) {
    std::string out;
    out.reserve(characters.size());
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const char16_t unit = characters[i];
        if (unit < 0xD800 || unit > 0xDFFF) {
            AppendUtf8(unit, out);
        } else if (unit < 0xDC00 && i + 1 < characters.size() && characters[i + 1] >= 0xDC00 &&
                   characters[i + 1] <= 0xDFFF) {
            AppendUtf8(0x10000 + ((unit - 0xD800u) << 10) + (characters[i + 1] - 0xDC00u), out);
            ++i;
        } else {
            AppendUtf8(kReplacement, out);
        }
    }
    return out;
}

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();)
        AppendUtf16(NextOfUtf8(utf8, at), out);
    return out;
}

}  // namespace zu::text
