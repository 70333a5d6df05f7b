#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>

#include "host/expression/Comparison.h"
#include "host/expression/DateText.h"
#include "host/expression/NumberFormat.h"
#include "host/expression/Picture.h"
#include "host/expression/TruthText.h"
#include "host/expression/functions/Functions.h"
#include "host/expression/functions/TextLimit.h"
#include "host/expression/functions/Widths.h"
#include "portable/text/NumberText.h"

namespace zu::expression {

namespace {

constexpr std::size_t kStrWidth = 10;

// ---- numbers and texts

template <char kFill>
void Str(const Instruction& step, const Machine&) {
    const std::size_t width = step.count() > 1 ? TextCount(step, step.argument(1).number) : kStrWidth;
    const std::size_t decimals = step.count() > 2 ? CutCount(step.argument(2).number) : 0;
    step.out->buffer.clear();
    AppendStr(step.argument(0).number, width, decimals, kFill, step.out->buffer);
    step.out->SetBuffer();
}

void StrWidth(Node& call) {
    if (call.children.size() < 2) return widths::Fixed<kStrWidth>(call);
    widths::SecondNumber(call);
}

/// The number that a text begins with, 0 for none: VAL("12 apples") is 12.
void Val(const Instruction& step, const Machine&) {
    std::string_view text = step.argument(0).text;
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) return step.out->SetNumber(0);
    text.remove_prefix(start);
    std::size_t end = text[0] == '-' || text[0] == '+' ? 1 : 0;
    const auto skipDigits = [&] {
        while (end < text.size() && text[end] >= '0' && text[end] <= '9')
            ++end;
    };
    skipDigits();
    if (end < text.size() && text[end] == '.') {
        ++end;
        skipDigits();
    }
    constexpr std::size_t kMostDigits = 400;
    double value = 0;
    text::ParseNumber(text.substr(0, std::min(end, kMostDigits)), value);
    step.out->SetNumber(value);
}

/// A number as bytes whose order is that of the numbers: big-endian, the sign bit turned over.
void BinToC(const Instruction& step, const Machine&) {
    const double size = step.count() > 1 ? step.argument(1).number : 4;
    const double number = std::trunc(step.argument(0).number);
    if (size != 1 && size != 2 && size != 4) return step.out->SetNull(Type::Text);
    const auto bytes = static_cast<unsigned>(size);
    const double limit = std::ldexp(1.0, static_cast<int>(8 * bytes - 1));
    if (number < -limit || number >= limit) return step.out->SetNull(Type::Text);
    const auto value = static_cast<std::uint64_t>(static_cast<std::int64_t>(number + limit));
    step.out->buffer.clear();
    for (unsigned i = bytes; i-- > 0;)
        step.out->buffer.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
    step.out->SetBuffer();
}

void BinToCWidth(Node& call) {
    const double size = call.children.size() > 1 ? widths::NumberOr(call, 1, 0) : 4;
    call.isFixedWidth = size == 1 || size == 2 || size == 4;
    call.width = call.isFixedWidth ? static_cast<std::size_t>(size) : 4;
}

// ---- dates and texts

void AppendMoment(const Slot& value, std::string& out) {
    AppendReadableDate(value.julianDay, out);
    if (value.type != Type::DateTime) return;
    out.push_back(' ');
    AppendReadableTime(value.milliseconds, out);
}

void DtoS(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    step.out->buffer.clear();
    if (value.isEmpty) {
        step.out->buffer.assign(8, ' ');
    } else {
        AppendDigitDate(value.julianDay, step.out->buffer);
    }
    step.out->SetBuffer();
}

void DtoC(const Instruction& step, const Machine& machine) {
    if (step.count() > 1 && step.argument(1).number == 1) return DtoS(step, machine);
    const Slot& value = step.argument(0);
    if (value.isEmpty) return step.out->SetText("  /  /    ");
    step.out->buffer.clear();
    AppendReadableDate(value.julianDay, step.out->buffer);
    step.out->SetBuffer();
}

void TtoC(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    const bool asDigits = step.count() > 1 && step.argument(1).number == 1;
    std::string& out = step.out->buffer;
    out.clear();
    if (value.isEmpty) {
        out.assign(asDigits ? 14 : 19, ' ');
    } else if (asDigits) {
        AppendDigitDate(value.julianDay, out);
        AppendDigitTime(value.milliseconds, out);
    } else {
        AppendReadableDate(value.julianDay, out);
        out.push_back(' ');
        AppendReadableTime(value.milliseconds, out);
    }
    step.out->SetBuffer();
}

/// The form is chosen by a second argument of 1; anything but a literal leaves the width open.
template <std::size_t kReadable, std::size_t kDigits>
void FormWidth(Node& call) {
    const bool isLiteral = call.children.size() < 2 || call.children[1]->kind == NodeKind::Literal;
    const bool asDigits = widths::NumberOr(call, 1, 0) == 1;
    call.width = isLiteral && asDigits ? kDigits : kReadable;
    call.isFixedWidth = isLiteral;
}

void SetMoment(const DateValue& date, Type type, Register& out) {
    if (date.isEmpty) return out.SetEmpty(type);
    type == Type::Date ? out.SetDate(date.julianDay) : out.SetDateTime(date.julianDay, date.milliseconds);
}

template <Type kType>
void TextToMoment(const Instruction& step, const Machine&) {
    DateValue date;
    if (!ParseDate(step.argument(0).text, date)) return step.out->SetEmpty(kType);
    SetMoment(date, kType, *step.out);
}

void SToD(const Instruction& step, const Machine&) {
    const std::string_view text = WithoutPadding(step.argument(0).text);
    std::int32_t day = 0;
    if (text.size() < 8 || !ParseDigitDate(text.data(), day)) return step.out->SetEmpty(Type::Date);
    step.out->SetDate(day);
}

// ---- anything

/// The text that a value is shown as: what CSTR gives.
void AppendShown(const Slot& value, std::string& out) {
    switch (value.type) {
        case Type::Boolean:
            out += value.boolean ? "TRUE" : "FALSE";
            break;
        case Type::Number:
            AppendShortest(value.number, out);
            break;
        case Type::Text:
            out += value.text;
            break;
        case Type::Date:
        case Type::DateTime:
            if (!value.isEmpty) AppendMoment(value, out);
            break;
        case Type::Unknown:
            break;
    }
}

void CStr(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    if (value.type == Type::Text) return step.out->SetText(value.text);
    step.out->buffer.clear();
    AppendShown(value, step.out->buffer);
    step.out->SetBuffer();
}

void CStrWidth(Node& call) {
    constexpr std::size_t kLongest = 25;  // -1.7976931348623157e+308, and MM/DD/YYYY HH:MM:SS
    const Node& value = *call.children[0];
    call.width = value.type == Type::Text ? value.width : kLongest;
}

void CDbl(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    switch (value.type) {
        case Type::Boolean:
            return step.out->SetNumber(value.boolean ? 1 : 0);
        case Type::Number:
            return step.out->SetNumber(value.number);
        case Type::Text: {
            double number = 0;
            if (text::ParseNumber(value.text, number) != text::NumberForm::Number) {
                return step.out->SetNull(Type::Number);
            }
            return step.out->SetNumber(number);
        }
        default:
            return step.out->SetNull(Type::Number);
    }
}

void CDate(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    if (value.type == Type::Date || value.type == Type::DateTime) return step.out->SetDate(value.julianDay);
    DateValue date;
    if (value.type != Type::Text || !ParseDate(value.text, date) || date.isEmpty) {
        return step.out->SetNull(Type::Date);
    }
    step.out->SetDate(date.julianDay);
}

void CBool(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    switch (value.type) {
        case Type::Boolean:
            return step.out->SetBoolean(value.boolean);
        case Type::Number:
            return step.out->SetBoolean(value.number != 0);
        case Type::Text: {
            const std::optional<bool> truth = TruthOfText(value.text);
            return truth ? step.out->SetBoolean(*truth) : step.out->SetNull(Type::Boolean);
        }
        default:
            return step.out->SetBoolean(true);
    }
}

void Transform(const Instruction& step, const Machine&) {
    const Slot& value = step.argument(0);
    std::string& out = step.out->buffer;
    out.clear();
    const std::string_view picture = step.count() > 1 ? step.argument(1).text : std::string_view{};
    if (WithoutPadding(picture).empty()) {
        AppendShown(value, out);
    } else if (value.type == Type::Number) {
        AppendNumberPicture(value.number, picture, out);
    } else {
        std::string shown;
        AppendShown(value, shown);
        AppendTextPicture(shown, picture, out);
    }
    step.out->SetBuffer();
}

void TransformWidth(Node& call) {
    CStrWidth(call);
    if (call.children.size() > 1) call.width = std::max(call.width, call.children[1]->width);
}

constexpr NullRule kStrict = NullRule::Strict;
constexpr NullRule kEmpty = NullRule::TakesEmpty;

constexpr std::array kFunctions{
    Function{"STR", "Nnn", 'T', kStrict, StrWidth, Str<' '>},
    Function{"STRZERO", "Nnn", 'T', kStrict, StrWidth, Str<'0'>},
    Function{"VAL", "T", 'N', kStrict, nullptr, Val},
    Function{"BINTOC", "Nn", 'T', kStrict, BinToCWidth, BinToC},
    Function{"DTOS", "D", 'T', kEmpty, widths::Fixed<8>, DtoS},
    Function{"DTOC", "Dn", 'T', kEmpty, FormWidth<10, 8>, DtoC},
    Function{"TTOC", "Dn", 'T', kEmpty, FormWidth<19, 14>, TtoC},
    Function{"CTOD", "T", 'D', kStrict, nullptr, TextToMoment<Type::Date>},
    Function{"CTOT", "T", 'M', kStrict, nullptr, TextToMoment<Type::DateTime>},
    Function{"STOD", "T", 'D', kStrict, nullptr, SToD},
    Function{"TRANSFORM", "Xt", 'T', kEmpty, TransformWidth, Transform},
    Function{"CSTR", "X", 'T', kEmpty, CStrWidth, CStr},
    Function{"CDBL", "X", 'N', kStrict, nullptr, CDbl},
    Function{"CDATE", "X", 'D', kStrict, nullptr, CDate},
    Function{"CBOOL", "X", 'B', kStrict, nullptr, CBool},
};

}  // namespace

std::span<const Function> ConversionFunctions() {
    return kFunctions;
}

}  // namespace zu::expression
