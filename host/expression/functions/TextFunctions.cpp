#include <algorithm>
#include <array>
#include <string>

#include "host/expression/CharacterUnits.h"
#include "host/expression/Comparison.h"
#include "host/expression/functions/Functions.h"
#include "host/expression/functions/TextLimit.h"
#include "host/expression/functions/Widths.h"
#include "portable/text/CaseMap.h"
#include "portable/text/Utf.h"

namespace zu::expression {

namespace {

void ChangeCase(const Instruction& step, const Machine& machine, bool toUpper) {
    const std::string_view text = step.argument(0).text;
    std::string& out = step.out->buffer;
    if (machine.countsCharacters) {
        std::u16string characters = text::ToUtf16(text);
        for (char16_t& c : characters)
            c = toUpper ? text::ToUpper(c) : text::ToLower(c);
        out = text::ToUtf8(characters);
    } else {
        const auto& table = toUpper ? machine.codePage->upper() : machine.codePage->lower();
        out.resize(text.size());
        std::transform(text.begin(), text.end(), out.begin(),
                       [&table](char c) { return static_cast<char>(table[static_cast<unsigned char>(c)]); });
    }
    step.out->SetBuffer();
}

void Upper(const Instruction& step, const Machine& machine) {
    ChangeCase(step, machine, true);
}
void Lower(const Instruction& step, const Machine& machine) {
    ChangeCase(step, machine, false);
}

/// Case changes may lengthen UTF-8 texts by half; code pages keep the width.
void CaseWidth(Node& call) {
    widths::SameAsFirst(call);
}

void Proper(const Instruction& step, const Machine& machine) {
    ChangeCase(step, machine, false);
    std::string& text = step.out->buffer;
    const auto& upper = machine.codePage->upper();
    const auto& lower = machine.codePage->lower();
    bool starts = true;
    for (char& c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetter =
            upper[byte] != byte || lower[byte] != byte || byte >= 0x80 || c == '\'' || (c >= '0' && c <= '9');
        if (starts) c = static_cast<char>(upper[byte]);
        starts = !isLetter;
    }
    step.out->SetBuffer();
}

std::string_view TrimLeft(std::string_view text) noexcept {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    return text;
}

void LTrim(const Instruction& step, const Machine&) {
    step.out->SetText(TrimLeft(step.argument(0).text));
}
void RTrim(const Instruction& step, const Machine&) {
    step.out->SetText(WithoutPadding(step.argument(0).text));
}
void AllTrim(const Instruction& step, const Machine&) {
    step.out->SetText(TrimLeft(WithoutPadding(step.argument(0).text)));
}

void Left(const Instruction& step, const Machine& machine) {
    const std::string_view text = step.argument(0).text;
    const std::size_t count = CutCount(step.argument(1).number);
    step.out->SetText(text.substr(0, UnitOffset(text, count, machine.countsCharacters)));
}

void Right(const Instruction& step, const Machine& machine) {
    const std::string_view text = step.argument(0).text;
    const std::size_t units = UnitCount(text, machine.countsCharacters);
    const std::size_t count = std::min(CutCount(step.argument(1).number), units);
    step.out->SetText(text.substr(UnitOffset(text, units - count, machine.countsCharacters)));
}

void SubStr(const Instruction& step, const Machine& machine) {
    std::string_view text = step.argument(0).text;
    const std::size_t start = CutCount(step.argument(1).number);
    if (start == 0) return step.out->SetText({});
    text.remove_prefix(UnitOffset(text, start - 1, machine.countsCharacters));
    if (step.count() > 2) {
        text = text.substr(0, UnitOffset(text, CutCount(step.argument(2).number), machine.countsCharacters));
    }
    step.out->SetText(text);
}

void SubStrWidth(Node& call) {
    const Node& text = *call.children[0];
    const double start = widths::NumberOr(call, 1, -1);
    const bool hasCount = call.children.size() > 2;
    const double count = hasCount ? widths::NumberOr(call, 2, -1) : static_cast<double>(text.width);
    call.width = text.width;
    if (count >= 0 && hasCount) call.width = std::min(call.width, CutCount(count));
    if (start < 1) return;
    const std::size_t skipped = std::min(CutCount(start) - 1, text.width);
    call.width = std::min(call.width, text.width - skipped);
    call.isFixedWidth = text.isFixedWidth && count >= 0;
}

void Len(const Instruction& step, const Machine& machine) {
    step.out->SetNumber(static_cast<double>(UnitCount(step.argument(0).text, machine.countsCharacters)));
}

void Space(const Instruction& step, const Machine&) {
    step.out->buffer.assign(TextCount(step, step.argument(0).number), ' ');
    step.out->SetBuffer();
}

void SpaceWidth(Node& call) {
    const double count = widths::NumberOr(call, 0, -1);
    call.width = count < 0 ? kMaxMadeText : std::min(CutCount(count), kMaxMadeText);
    call.isFixedWidth = count >= 0;
}

void Replicate(const Instruction& step, const Machine&) {
    const std::string_view text = step.argument(0).text;
    const std::size_t count = text.empty() ? 0 : TextCount(step, step.argument(1).number);
    TextCount(step, static_cast<double>(count) * static_cast<double>(text.size()));
    std::string& out = step.out->buffer;
    out.clear();
    for (std::size_t i = 0; i < count; ++i)
        out += text;
    step.out->SetBuffer();
}

void ReplicateWidth(Node& call) {
    const double count = widths::NumberOr(call, 1, -1);
    const Node& text = *call.children[0];
    const double width = count * static_cast<double>(text.width);
    call.width = count < 0 || width > kMaxMadeText ? kMaxMadeText : static_cast<std::size_t>(width);
    call.isFixedWidth = count >= 0 && text.isFixedWidth;
}

enum class Side { Left, Right, Both };

template <Side kSide>
void Pad(const Instruction& step, const Machine& machine) {
    const std::string_view text = step.argument(0).text;
    const std::size_t wanted = TextCount(step, step.argument(1).number);
    const std::size_t units = UnitCount(text, machine.countsCharacters);
    if (units >= wanted) {
        return step.out->SetText(text.substr(0, UnitOffset(text, wanted, machine.countsCharacters)));
    }
    std::string_view fill = " ";
    if (step.count() > 2 && !step.argument(2).text.empty()) {
        fill =
            step.argument(2).text.substr(0, UnitLength(step.argument(2).text, 0, machine.countsCharacters));
    }
    const std::size_t missing = wanted - units;
    const std::size_t left = kSide == Side::Left ? missing : kSide == Side::Both ? missing / 2 : 0;
    std::string& out = step.out->buffer;
    out.clear();
    for (std::size_t i = 0; i < left; ++i)
        out += fill;
    out += text;
    for (std::size_t i = left; i < missing; ++i)
        out += fill;
    step.out->SetBuffer();
}

void Stuff(const Instruction& step, const Machine& machine) {
    const std::string_view text = step.argument(0).text;
    const std::size_t start = std::max<std::size_t>(CutCount(step.argument(1).number), 1);
    const std::size_t from = UnitOffset(text, start - 1, machine.countsCharacters);
    const std::string_view rest = text.substr(from);
    const std::size_t removed = UnitOffset(rest, CutCount(step.argument(2).number), machine.countsCharacters);
    step.out->buffer.assign(text.substr(0, from)).append(step.argument(3).text).append(rest.substr(removed));
    step.out->SetBuffer();
}

void StuffWidth(Node& call) {
    const std::size_t a = call.children[0]->width;
    const std::size_t b = call.children[3]->width;
    call.width = a > kUnboundedWidth - b ? kUnboundedWidth : a + b;
}

void Chr(const Instruction& step, const Machine& machine) {
    const double code = step.argument(0).number;
    if (!(code >= 0 && code < 256)) return step.out->SetNull(Type::Text);
    if (machine.countsCharacters) {
        const auto character = static_cast<char16_t>(code);
        step.out->buffer = text::ToUtf8(std::u16string_view(&character, 1));
    } else {
        step.out->buffer.assign(1, static_cast<char>(static_cast<unsigned char>(code)));
    }
    step.out->SetBuffer();
}

void Asc(const Instruction& step, const Machine& machine) {
    const std::string_view text = step.argument(0).text;
    if (text.empty()) return step.out->SetNumber(0);
    if (machine.countsCharacters)
        return step.out->SetNumber(text::ToUtf16(text.substr(0, UnitLength(text, 0, true)))[0]);
    step.out->SetNumber(static_cast<unsigned char>(text[0]));
}

enum class Kind { Alpha, Digit, Upper, Lower };

template <Kind kKind>
void IsKind(const Instruction& step, const Machine& machine) {
    const std::string_view text = step.argument(0).text;
    if (text.empty()) return step.out->SetBoolean(false);
    if (kKind == Kind::Digit) return step.out->SetBoolean(text[0] >= '0' && text[0] <= '9');
    bool hasUpper = false;
    bool hasLower = false;
    if (machine.countsCharacters) {
        const char16_t c = text::ToUtf16(text.substr(0, UnitLength(text, 0, true)))[0];
        hasUpper = text::ToUpper(c) != c;
        hasLower = text::ToLower(c) != c;
    } else {
        const auto byte = static_cast<unsigned char>(text[0]);
        hasUpper = machine.codePage->upper()[byte] != byte;
        hasLower = machine.codePage->lower()[byte] != byte;
    }
    // Whoever has an upper case form is lower case, and the other way round.
    step.out->SetBoolean((kKind != Kind::Lower && hasLower) || (kKind != Kind::Upper && hasUpper));
}

void Soundex(const Instruction& step, const Machine&) {
    static constexpr std::string_view kCodes = "01230120022455012623010202";  // A to Z
    std::string& out = step.out->buffer;
    out.clear();
    char before = '0';
    for (const char c : step.argument(0).text) {
        const char letter = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
        if (letter < 'A' || letter > 'Z') continue;
        const char code = kCodes[static_cast<std::size_t>(letter - 'A')];
        if (out.empty()) {
            out.push_back(letter);
        } else if (code != '0' && code != before) {
            out.push_back(code);
        }
        // H and W do not part two letters of the same code; vowels do.
        if (letter != 'H' && letter != 'W') before = code;
        if (out.size() == 4) break;
    }
    if (out.empty()) out.push_back('0');
    out.resize(4, '0');
    step.out->SetBuffer();
}

void Descend(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    constexpr std::int32_t kDescendingDays = 5231808;  // as xBase programs have it, so that their keys agree
    switch (value.type) {
        case Type::Text:
            step.out->buffer.assign(value.text);
            for (char& c : step.out->buffer)
                c = static_cast<char>(-static_cast<unsigned char>(c));
            return step.out->SetBuffer();
        case Type::Boolean:
            return step.out->SetBoolean(!value.boolean);
        case Type::Date:
        case Type::DateTime:
            return step.out->SetNumber(kDescendingDays - value.julianDay -
                                       static_cast<double>(value.milliseconds) / kDayMilliseconds);
        default:
            return step.out->SetNumber(-value.number);
    }
}

void DescendWidth(Node& call) {
    widths::SameAsFirst(call);
    if (call.type == Type::Date || call.type == Type::DateTime) call.type = Type::Number;
}

void CutWidth(Node& call) {
    widths::CountOfFirst(call);
}

constexpr NullRule kStrict = NullRule::Strict;

constexpr std::array kFunctions{
    Function{"UPPER", "T", 'T', kStrict, CaseWidth, Upper},
    Function{"LOWER", "T", 'T', kStrict, CaseWidth, Lower},
    Function{"PROPER", "T", 'T', kStrict, CaseWidth, Proper},
    Function{"LTRIM", "T", 'T', kStrict, widths::AtMostFirst, LTrim},
    Function{"RTRIM", "T", 'T', kStrict, widths::AtMostFirst, RTrim, false, "TRIM"},
    Function{"ALLTRIM", "T", 'T', kStrict, widths::AtMostFirst, AllTrim},
    Function{"LEFT", "TN", 'T', kStrict, CutWidth, Left},
    Function{"RIGHT", "TN", 'T', kStrict, CutWidth, Right},
    Function{"SUBSTR", "TNn", 'T', kStrict, SubStrWidth, SubStr, false, "MID"},
    Function{"LEN", "T", 'N', kStrict, nullptr, Len},
    Function{"SPACE", "N", 'T', kStrict, SpaceWidth, Space},
    Function{"REPLICATE", "TN", 'T', kStrict, ReplicateWidth, Replicate},
    Function{"PADL", "TNt", 'T', kStrict, widths::SecondNumber, Pad<Side::Left>},
    Function{"PADR", "TNt", 'T', kStrict, widths::SecondNumber, Pad<Side::Right>},
    Function{"PADC", "TNt", 'T', kStrict, widths::SecondNumber, Pad<Side::Both>},
    Function{"STUFF", "TNNT", 'T', kStrict, StuffWidth, Stuff},
    Function{"CHR", "N", 'T', kStrict, widths::Fixed<1>, Chr},
    Function{"ASC", "T", 'N', kStrict, nullptr, Asc},
    Function{"ISALPHA", "T", 'B', kStrict, nullptr, IsKind<Kind::Alpha>},
    Function{"ISDIGIT", "T", 'B', kStrict, nullptr, IsKind<Kind::Digit>},
    Function{"ISUPPER", "T", 'B', kStrict, nullptr, IsKind<Kind::Upper>},
    Function{"ISLOWER", "T", 'B', kStrict, nullptr, IsKind<Kind::Lower>},
    Function{"SOUNDEX", "T", 'T', kStrict, widths::Fixed<4>, Soundex},
    Function{"DESCEND", "X", '1', kStrict, DescendWidth, Descend},
};

}  // namespace

std::span<const Function> TextFunctions() {
    return kFunctions;
}

}  // namespace zu::expression
