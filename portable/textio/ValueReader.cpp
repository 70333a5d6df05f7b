#include "portable/textio/ValueReader.h"

#include <cmath>
#include <limits>
#include <optional>

#include "portable/text/NumberText.h"
#include "portable/textio/Cell.h"

namespace zu::textio {

namespace {

constexpr std::size_t kInteger16Width = 6;
constexpr std::size_t kInteger32Width = 11;
constexpr std::size_t kByteWidth = 3;
constexpr std::size_t kLongTextWidth = 255;
/// Longer texts of digits are left to the platform.
constexpr std::size_t kMostDigits = 250;

template <class Char>
std::basic_string_view<Char> WithoutBlanksAround(std::basic_string_view<Char> text) noexcept {
    while (!text.empty() && text.front() == Char(' '))
        text.remove_prefix(1);
    while (!text.empty() && text.back() == Char(' '))
        text.remove_suffix(1);
    return text;
}

template <class Char>
void Narrow(std::basic_string_view<Char> text, std::string& out) {
    out.clear();
    for (const Char c : text) {
        const auto unit = static_cast<std::make_unsigned_t<Char>>(c);
        out += unit < 0x80 ? static_cast<char>(unit) : '\x01';
    }
}

bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

std::optional<std::int64_t> PlainInteger(std::string_view text) noexcept {
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    if (text.empty() || text.size() > 18) return std::nullopt;
    std::int64_t number = 0;
    for (const char c : text) {
        if (!IsDigit(c)) return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return negative ? -number : number;
}

/// Digits with a sign in front, a point between and an exponent behind, where every program agrees on the
/// value.
std::optional<double> PlainNumber(std::string_view text) noexcept {
    if (text.size() > kMostDigits) return std::nullopt;
    std::size_t digits = 0;
    std::size_t at = !text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0;
    bool point = false;
    for (; at < text.size() && (IsDigit(text[at]) || (text[at] == '.' && !point)); ++at) {
        if (text[at] == '.') {
            point = true;
        } else {
            ++digits;
        }
    }
    if (digits == 0) return std::nullopt;
    if (at < text.size()) {
        if (text[at] != 'e' && text[at] != 'E') return std::nullopt;
        ++at;
        if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
        if (at == text.size()) return std::nullopt;
        for (; at < text.size(); ++at) {
            if (!IsDigit(text[at])) return std::nullopt;
        }
    }
    double number = 0;
    if (text::ParseNumber(text, number) != text::NumberForm::Number || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::size_t Width(int length) noexcept {
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

template <class Char>
void ReadInteger(std::string_view text, std::int32_t least, std::int32_t most, ReadValue<Char>& value,
                 typename ReadValue<Char>::Kind kind) noexcept {
    const std::optional<std::int64_t> number = text.empty() ? 0 : PlainInteger(text);
    if (!number || *number < least || *number > most) return;
    value.kind = kind;
    value.integer = static_cast<std::int32_t>(*number);
}

template <class Char>
void ReadNumber(std::string_view text, bool single, ReadValue<Char>& value) noexcept {
    const std::optional<double> number = text.empty() ? 0 : PlainNumber(text);
    if (!number) return;
    if (single && std::fabs(*number) > std::numeric_limits<float>::max()) return;
    value.kind = single ? ReadValue<Char>::Kind::Single : ReadValue<Char>::Kind::Double;
    value.number = single ? static_cast<double>(static_cast<float>(*number)) : *number;
}

}  // namespace

ValueReader::ValueReader(const ImportFormat& format)
    : maskLength_(format.maskLength()),
      booleanLength_(format.booleanLength()),
      lengthOfSingle_(format.lengthOfSingle()),
      lengthOfDouble_(format.lengthOfDouble()),
      lengthOfCurrency_(format.lengthOfCurrency()),
      stringsTrimmed_(format.stringsTrimmed()),
      dates_(format.dateMask(), format.dateSeparator(), format.maskLength()) {}

std::size_t ValueReader::WidthOf(const ImportField& field) const noexcept {
    switch (static_cast<FieldType>(field.type)) {
        case FieldType::Integer16:
            return kInteger16Width;
        case FieldType::Integer32:
            return kInteger32Width;
        case FieldType::Single:
            return Width(lengthOfSingle_);
        case FieldType::Double:
            return Width(lengthOfDouble_);
        case FieldType::Currency:
            return Width(lengthOfCurrency_);
        case FieldType::Date:
            return maskLength_;
        case FieldType::Boolean:
            return Width(booleanLength_);
        case FieldType::Byte:
            return kByteWidth;
        case FieldType::LongText:
            return kLongTextWidth;
        case FieldType::Text:
        case FieldType::Decimal:
            break;
    }
    return Width(field.size);
}

template <class Char>
ReadValue<Char> ValueReader::Read(const ImportField& field, std::basic_string_view<Char> token) {
    using Kind = typename ReadValue<Char>::Kind;
    ReadValue<Char> value;
    value.text = token;
    const auto type = static_cast<FieldType>(field.type);
    switch (type) {
        case FieldType::Text:
        case FieldType::LongText:
            if (stringsTrimmed_) value.text = token.substr(0, token.find_last_not_of(Char(' ')) + 1);
            return value;
        case FieldType::Boolean:
            value.kind = Kind::Truth;
            return value;
        case FieldType::Integer16:
        case FieldType::Integer32:
        case FieldType::Byte:
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Currency:
        case FieldType::Decimal:
        case FieldType::Date:
            break;
        default:
            return value;
    }
    std::string_view plain;
    if constexpr (std::is_same_v<Char, char>) {
        plain = WithoutBlanksAround(token);
    } else {
        Narrow(WithoutBlanksAround(token), narrow_);
        plain = narrow_;
    }
    if (type == FieldType::Date) {
        value.kind = plain.empty() ? Kind::NoDate : Kind::BadDate;
        if (plain.empty()) return value;
        if (const auto day = dates_.Scan(plain)) {
            value.kind = Kind::Date;
            value.integer = *day;
        }
        return value;
    }
    value.kind = Kind::OtherNumber;
    if (type == FieldType::Integer32) {
        ReadInteger(plain, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(),
                    value, Kind::Integer32);
    } else if (type == FieldType::Integer16 || type == FieldType::Byte) {
        ReadInteger(plain, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max(),
                    value, Kind::Integer16);
    } else {
        ReadNumber(plain, type == FieldType::Single, value);
    }
    return value;
}

template ReadValue<char> ValueReader::Read(const ImportField&, std::string_view);
template ReadValue<char16_t> ValueReader::Read(const ImportField&, std::u16string_view);

}  // namespace zu::textio
