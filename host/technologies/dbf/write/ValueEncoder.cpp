#include "host/technologies/dbf/write/ValueEncoder.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <system_error>

#include "host/technologies/dbf/write/ValueText.h"
#include "portable/error/Error.h"
#include "portable/text/NumberText.h"
#include "portable/text/Utf.h"

namespace zu::dbf::write {
namespace {

using technologies::Decimal;
using technologies::Value;

// A text in a message: enough of it to recognise it.
std::string Shown(std::u16string_view text) {
    constexpr std::size_t kMost = 40;
    return "\"" + text::ToUtf8(text.substr(0, kMost)) + (text.size() > kMost ? "...\"" : "\"");
}

Decimal FromUnits(std::int64_t units, std::uint8_t scale) {
    Decimal decimal;
    decimal.negative = units < 0;
    decimal.low =
        decimal.negative ? ~static_cast<std::uint64_t>(units) + 1 : static_cast<std::uint64_t>(units);
    decimal.scale = scale;
    return decimal;
}

}  // namespace

void ValueEncoder::Refuse(std::size_t field, const std::string& what) const {
    throw Error(ErrorKind::TypeMismatch, "The field " + layout_.record.fields[field].name + " of the table " +
                                             layout_.record.tableName + " cannot hold " + what + ".");
}

void ValueEncoder::FailFit(std::size_t field, const std::string& what) const {
    const auto& layout = layout_.record.fields[field];
    throw Error(ErrorKind::Overflow, "The value " + what + " does not fit into the field " + layout.name +
                                         " of the table " + layout_.record.tableName + " (width " +
                                         std::to_string(layout.width) + ", decimal places " +
                                         std::to_string(layout.decimals) + ").");
}

void ValueEncoder::Set(std::byte* record, std::size_t field, const Value& value) const {
    if (value.kind == Value::Kind::Null) {
        encoder_.SetNull(record, field);
        return;
    }
    switch (layout_.kinds[field]) {
        case FieldKind::Character:
        case FieldKind::Varchar: {
            if (value.kind == Value::Kind::Binary) Refuse(field, "bytes");
            std::u16string text = TextOf(value);
            // Blanks at the end mean nothing in a table: they are no reason to refuse a text.
            while (text.size() > layout_.record.fields[field].width && text.back() == u' ')
                text.pop_back();
            encoder_.SetText(record, field, text);
            break;
        }
        case FieldKind::Varbinary: {
            if (value.kind != Value::Kind::Binary) Refuse(field, "anything but bytes");
            encoder_.SetBytes(record, field,
                              {reinterpret_cast<const char*>(value.binary.data()), value.binary.size()});
            break;
        }
        case FieldKind::Number:
        case FieldKind::Float:
        case FieldKind::Integer:
        case FieldKind::Double:
        case FieldKind::Currency:
            SetNumber(record, field, value);
            break;
        case FieldKind::Date:
        case FieldKind::DateTime:
            SetMoment(record, field, value);
            break;
        case FieldKind::Logical:
            SetBoolean(record, field, value);
            break;
        default:
            throw Error(ErrorKind::AccessDenied, "The field " + layout_.record.fields[field].name +
                                                     " of the table " + layout_.record.tableName +
                                                     " cannot be changed: fields of its type are only read.");
    }
}

void ValueEncoder::SetNumber(std::byte* record, std::size_t field, const Value& value) const {
    switch (value.kind) {
        case Value::Kind::Integer:
            SetDecimal(record, field, FromUnits(value.integer, 0));
            break;
        case Value::Kind::Currency:
            SetDecimal(record, field, FromUnits(value.integer, 4));
            break;
        case Value::Kind::Decimal:
            SetDecimal(record, field, value.decimal);
            break;
        case Value::Kind::Double:
            encoder_.SetNumber(record, field, value.number);
            break;
        case Value::Kind::Text: {
            if (IsBlankText(value.text)) {
                encoder_.BlankField(record, field);
                break;
            }
            const auto number = DecimalIn(value.text);
            if (!number) Refuse(field, "the text " + Shown(value.text) + ": a number is expected");
            SetDecimal(record, field, *number);
            break;
        }
        case Value::Kind::Boolean:
            Refuse(field, "a truth value: a number is expected");
        case Value::Kind::DateTime:
            Refuse(field, "a date: a number is expected");
        default:
            Refuse(field, "bytes: a number is expected");
    }
}

// Number fields are written from the decimal digits: a double holds only fifteen of them.
void ValueEncoder::SetDecimal(std::byte* record, std::size_t field, const Decimal& decimal) const {
    const FieldKind kind = layout_.kinds[field];
    const auto& layout = layout_.record.fields[field];
    if (kind == FieldKind::Double) {
        encoder_.SetNumber(record, field,
                           text::ToDouble({decimal.low, decimal.high, decimal.scale, decimal.negative}));
        return;
    }
    const unsigned places = kind == FieldKind::Currency  ? 4U
                            : kind == FieldKind::Integer ? 0U
                                                         : layout.decimals;
    const Decimal rounded = Rounded(decimal, places);
    std::string digits = DigitsOf(rounded);
    digits.append(places - rounded.scale, '0');
    const bool zero = digits.find_first_of("123456789") == std::string::npos;
    const bool negative = rounded.negative && !zero;
    if (kind == FieldKind::Integer || kind == FieldKind::Currency) {
        const auto first = std::min(digits.find_first_not_of('0'), digits.size() - 1);
        std::int64_t units = 0;
        const auto end = digits.data() + digits.size();
        if (std::from_chars(digits.data() + first, end, units).ec != std::errc())
            FailFit(field, (negative ? "-" : "") + digits);
        encoder_.SetDecimal(record, field, negative ? -units : units);
        return;
    }
    const std::size_t whole = digits.size() - places;
    const auto first = std::min(digits.find_first_not_of('0'), whole - 1);
    std::string text = (negative ? "-" : "") + digits.substr(first, whole - first);
    if (places > 0) text += "." + digits.substr(whole);
    // A zero in front of the point gives way when it is all that is too much, as in other programs.
    if (text.size() > layout.width && places > 0 && whole - first == 1 && digits[first] == '0')
        text.erase(negative ? 1 : 0, 1);
    if (text.size() > layout.width) FailFit(field, text);
    std::byte* at = record + layout.offset;
    std::memset(at, ' ', layout.width - text.size());
    std::memcpy(at + (layout.width - text.size()), text.data(), text.size());
    if (layout.nullBit >= 0) {
        std::byte& flags =
            record[layout_.record.nullFlagsOffset + static_cast<std::uint32_t>(layout.nullBit) / 8];
        flags &= ~(std::byte{1} << (layout.nullBit % 8));
    }
}

void ValueEncoder::SetMoment(std::byte* record, std::size_t field, const Value& value) const {
    if (value.kind == Value::Kind::DateTime) {
        encoder_.SetDateTime(record, field, value.julianDay, value.milliseconds);
        return;
    }
    if (value.kind != Value::Kind::Text)
        Refuse(field, value.kind == Value::Kind::Boolean ? "a truth value: a date is expected"
                                                         : "a number: a date is expected");
    if (IsBlankText(value.text)) {
        encoder_.BlankField(record, field);
        return;
    }
    const auto moment = MomentIn(value.text);
    if (!moment) Refuse(field, "the text " + Shown(value.text) + ": a date such as 2024-01-31 is expected");
    encoder_.SetDateTime(record, field, moment->julianDay, moment->milliseconds);
}

void ValueEncoder::SetBoolean(std::byte* record, std::size_t field, const Value& value) const {
    switch (value.kind) {
        case Value::Kind::Boolean:
            encoder_.SetBoolean(record, field, value.boolean);
            break;
        case Value::Kind::Integer:
        case Value::Kind::Currency:
            encoder_.SetBoolean(record, field, value.integer != 0);
            break;
        case Value::Kind::Double:
            encoder_.SetBoolean(record, field, value.number != 0);
            break;
        case Value::Kind::Decimal:
            encoder_.SetBoolean(record, field, value.decimal.low != 0 || value.decimal.high != 0);
            break;
        case Value::Kind::Text: {
            if (IsBlankText(value.text)) {
                encoder_.BlankField(record, field);
                break;
            }
            const auto truth = TruthIn(value.text);
            if (!truth) Refuse(field, "the text " + Shown(value.text) + ": True or False is expected");
            encoder_.SetBoolean(record, field, *truth);
            break;
        }
        default:
            Refuse(field, "a date: True or False is expected");
    }
}

std::string ValueEncoder::MemoContent(std::size_t field, const Value& value) const {
    if (value.kind == Value::Kind::Null) return {};
    if (layout_.kinds[field] == FieldKind::MemoBinary) {
        if (value.kind != Value::Kind::Binary) Refuse(field, "anything but bytes");
        return {value.binary.begin(), value.binary.end()};
    }
    if (value.kind == Value::Kind::Binary) Refuse(field, "bytes: a text is expected");
    std::size_t bad = 0;
    const std::u16string text = TextOf(value);
    const auto bytes = layout_.record.codePage->Encode(text, &bad);
    if (!bytes)
        throw Error(ErrorKind::InvalidArgument,
                    "The character at position " + std::to_string(bad + 1) + " of the text for the field " +
                        layout_.record.fields[field].name + " of the table " + layout_.record.tableName +
                        " is not in code page " + std::to_string(layout_.record.codePage->number()) + ".");
    return *bytes;
}

}  // namespace zu::dbf::write
