// How files name their character set: by a byte in the header or by a word in a file beside the table.

#include <iterator>
#include <string>

#include "portable/text/CodePage.h"

namespace zu::text {

namespace {

struct Mark {
    std::uint8_t mark;
    std::uint16_t number;
};

// FoxPro's marks and the language drivers of dBASE IV and later, which share the byte.
constexpr Mark kMarks[] = {
    {0x01, 437},  {0x02, 850},  {0x03, 1252}, {0x04, 10000}, {0x08, 865},   {0x09, 437},   {0x0A, 850},
    {0x0B, 437},  {0x0D, 437},  {0x0E, 850},  {0x0F, 437},   {0x10, 850},   {0x11, 437},   {0x12, 850},
    {0x13, 932},  {0x14, 850},  {0x15, 437},  {0x16, 850},   {0x17, 865},   {0x18, 437},   {0x19, 437},
    {0x1A, 850},  {0x1B, 437},  {0x1C, 863},  {0x1D, 850},   {0x1F, 852},   {0x22, 852},   {0x23, 852},
    {0x24, 860},  {0x25, 850},  {0x26, 866},  {0x37, 850},   {0x40, 852},   {0x4D, 936},   {0x4E, 949},
    {0x4F, 950},  {0x50, 874},  {0x57, 1252}, {0x58, 1252},  {0x59, 1252},  {0x64, 852},   {0x65, 866},
    {0x66, 865},  {0x67, 861},  {0x68, 895},  {0x69, 620},   {0x6A, 737},   {0x6B, 857},   {0x6C, 863},
    {0x78, 950},  {0x79, 949},  {0x7A, 936},  {0x7B, 932},   {0x7C, 874},   {0x7D, 1255},  {0x7E, 1256},
    {0x86, 737},  {0x87, 852},  {0x88, 857},  {0x96, 10007}, {0x97, 10029}, {0x98, 10006}, {0xC8, 1250},
    {0xC9, 1251}, {0xCA, 1254}, {0xCB, 1253}, {0xCC, 1257}};

struct Alias {
    std::string_view name;  ///< capital letters and digits only
    unsigned number;
};

constexpr Alias kAliases[] = {{"UTF8", 65001},        {"UNICODE", 65001},
                              {"ISO88591", 28591},    {"LATIN1", 28591},
                              {"ISO88592", 28592},    {"LATIN2", 28592},
                              {"ISO885915", 28605},   {"LATIN9", 28605},
                              {"BIG5", 950},          {"GBK", 936},
                              {"GB2312", 936},        {"SHIFTJIS", 932},
                              {"SJIS", 932},          {"EUCKR", 949},
                              {"KAMENICKY", 895},     {"KEYBCS2", 895},
                              {"MAZOVIA", 620},       {"MACINTOSH", 10000},
                              {"MACROMAN", 10000},    {"MACGREEK", 10006},
                              {"MACCYRILLIC", 10007}, {"MACCENTRALEUROPE", 10029},
                              {"ASCII", 1252},        {"USASCII", 1252}};

/// Words that may stand in front of the number.
constexpr std::string_view kPrefixes[] = {"ANSI", "OEM", "CP", "WINDOWS", "WIN", "IBM", "DOS", "MSDOS", "X"};

/// Letters as capitals and digits; blanks, hyphens, underscores and the like do not count.
std::string Reduced(std::string_view name) {
    std::string reduced;
    for (const char c : name.substr(0, 64)) {
        if (c >= 'a' && c <= 'z') {
            reduced.push_back(static_cast<char>(c - 32));
        } else if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) {
            reduced.push_back(c);
        }
    }
    return reduced;
}

std::optional<unsigned> Number(std::string_view digits) noexcept {
    if (digits.empty() || digits.size() > 5) return std::nullopt;
    unsigned number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return number;
}

}  // namespace

const CodePage* CodePage::FindByDbfMark(std::uint8_t mark) noexcept {
    for (const Mark& entry : kMarks) {
        if (entry.mark == mark) return Find(entry.number);
    }
    return nullptr;
}

const CodePage* CodePage::FindByName(std::string_view name) noexcept {
    const std::string reduced = Reduced(name);
    for (const Alias& alias : kAliases) {
        if (alias.name == reduced) return Find(alias.number);
    }
    std::string_view rest = reduced;
    for (bool shorter = true; shorter;) {
        if (const auto number = Number(rest)) {
            // ESRI writes ISO sets as "88591".
            return *number == 88591 ? Find(28591) : Find(*number);
        }
        shorter = false;
        for (const std::string_view prefix : kPrefixes) {
            if (rest.starts_with(prefix)) {
                rest.remove_prefix(prefix.size());
                shorter = true;
                break;
            }
        }
    }
    return nullptr;
}

}  // namespace zu::text
