#include "host/technologies/dbf/FieldEncoder.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/DbfFormat.h"
#include "portable/error/Error.h"
#include "portable/text/NumberText.h"

namespace zu::dbf {

namespace {

using expression::FieldLayout;

constexpr double kCurrencyUnits = 10'000;
constexpr double kGreatestCurrency = 9.2e18;

void PutDigits(char* at, int value, int count) noexcept {
    for (int i = count; i-- > 0; value /= 10)
        at[i] = static_cast<char>('0' + value % 10);
}

char* Characters(std::byte* at) noexcept {
    return reinterpret_cast<char*>(at);
}

double PowerOfTen(unsigned exponent) noexcept {
    double power = 1;
    while (exponent-- > 0)
        power *= 10;
    return power;
}

}  // namespace

void FieldEncoder::FailFit(std::size_t field, const std::string& value) const {
    const FieldLayout& layout = At(field);
    throw Error(ErrorKind::Overflow, "The value " + value + " does not fit into the field " + layout.name +
                                         " of the table " + layout_.record.tableName + " (width " +
                                         std::to_string(layout.width) + ", decimal places " +
                                         std::to_string(layout.decimals) + ").");
}

void FieldEncoder::FailKind(std::size_t field, const char* what) const {
    throw Error(ErrorKind::TypeMismatch, "The field " + At(field).name + " of the table " +
                                             layout_.record.tableName + " cannot hold " + what + ".");
}

void FieldEncoder::SetBit(std::byte* record, std::int32_t bit, bool value) const noexcept {
    if (bit < 0) return;
    std::byte& flags = record[layout_.record.nullFlagsOffset + static_cast<std::uint32_t>(bit) / 8];
    const std::byte mask = std::byte{1} << (bit % 8);
    flags = value ? flags | mask : flags & ~mask;
}

void FieldEncoder::MarkPresent(std::byte* record, const FieldLayout& field) const noexcept {
    SetBit(record, field.nullBit, false);
}

void FieldEncoder::Blank(std::byte* record) const {
    // Hidden columns are zero, and so are the null flags.
    std::memset(record, 0, layout_.record.recordLength);
    *record = std::byte{kLiveMark};
    for (std::size_t field = 0; field < layout_.kinds.size(); ++field)
        BlankField(record, field);
}

void FieldEncoder::BlankField(std::byte* record, std::size_t field) const {
    const FieldLayout& layout = At(field);
    bool text = false;
    switch (layout_.kinds[field]) {
        case FieldKind::Character:
        case FieldKind::Number:
        case FieldKind::Float:
        case FieldKind::Date:
        case FieldKind::Logical:
            text = true;
            break;
        case FieldKind::MemoText:
        case FieldKind::MemoBinary:
            text = layout.width != 4;
            break;
        default:
            break;
    }
    std::memset(record + layout.offset, text ? ' ' : 0, layout.width);
    // A variable-length field without content: length 0 in its last byte.
    SetBit(record, layout.lengthBit, true);
    MarkPresent(record, layout);
}

void FieldEncoder::SetNull(std::byte* record, std::size_t field) const {
    BlankField(record, field);
    SetBit(record, At(field).nullBit, true);
}

void FieldEncoder::SetText(std::byte* record, std::size_t field, std::u16string_view text) const {
    const FieldKind kind = layout_.kinds[field];
    if (kind != FieldKind::Character && kind != FieldKind::Varchar) FailKind(field, "a text");
    std::size_t bad = 0;
    const auto bytes = layout_.record.codePage->Encode(text, &bad);
    if (!bytes) {
        throw Error(ErrorKind::InvalidArgument,
                    "The character at position " + std::to_string(bad + 1) + " of the text for the field " +
                        At(field).name + " of the table " + layout_.record.tableName +
                        " is not in code page " + std::to_string(layout_.record.codePage->number()) + ".");
    }
    SetBytes(record, field, *bytes);
}

void FieldEncoder::SetBytes(std::byte* record, std::size_t field, std::string_view bytes) const {
    const FieldLayout& layout = At(field);
    const FieldKind kind = layout_.kinds[field];
    const bool variable = kind == FieldKind::Varchar || kind == FieldKind::Varbinary;
    if (!variable && kind != FieldKind::Character) FailKind(field, "bytes");
    if (bytes.size() > layout.width) FailFit(field, "of " + std::to_string(bytes.size()) + " bytes");
    if (variable && layout.lengthBit < 0 && bytes.size() < layout.width)
        FailKind(field, "less than its width");
    std::byte* at = record + layout.offset;
    std::memcpy(at, bytes.data(), bytes.size());
    std::memset(at + bytes.size(), variable ? 0 : ' ', layout.width - bytes.size());
    if (variable) {
        const bool full = bytes.size() == layout.width;
        if (!full) at[layout.width - 1] = static_cast<std::byte>(bytes.size());
        SetBit(record, layout.lengthBit, !full);
    }
    MarkPresent(record, layout);
}

void FieldEncoder::SetNumber(std::byte* record, std::size_t field, double value) const {
    const FieldLayout& layout = At(field);
    std::byte* at = record + layout.offset;
    switch (layout_.kinds[field]) {
        case FieldKind::Number:
        case FieldKind::Float:
            if (!text::PrintNumber(value, layout.width, layout.decimals, Characters(at)))
                FailFit(field, std::to_string(value));
            break;
        case FieldKind::Integer: {
            const double rounded = std::round(value);
            if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
                  rounded <= std::numeric_limits<std::int32_t>::max()))
                FailFit(field, std::to_string(value));
            StoreLittle(at, static_cast<std::int32_t>(rounded));
            break;
        }
        case FieldKind::Double:
            StoreLittle(at, value);
            break;
        case FieldKind::Currency: {
            const double units = std::round(value * kCurrencyUnits);
            if (!(std::fabs(units) <= kGreatestCurrency)) FailFit(field, std::to_string(value));
            StoreLittle(at, static_cast<std::int64_t>(units));
            break;
        }
        default:
            FailKind(field, "a number");
    }
    MarkPresent(record, layout);
}

void FieldEncoder::SetDecimal(std::byte* record, std::size_t field, std::int64_t units) const {
    const FieldLayout& layout = At(field);
    std::byte* at = record + layout.offset;
    switch (layout_.kinds[field]) {
        case FieldKind::Number:
        case FieldKind::Float:
            if (!text::PrintUnits(units, layout.width, layout.decimals, Characters(at)))
                FailFit(field, std::to_string(units) + " (in units of the last place)");
            break;
        case FieldKind::Integer:
            if (units < std::numeric_limits<std::int32_t>::min() ||
                units > std::numeric_limits<std::int32_t>::max())
                FailFit(field, std::to_string(units));
            StoreLittle(at, static_cast<std::int32_t>(units));
            break;
        case FieldKind::Double:
            StoreLittle(at, static_cast<double>(units) / PowerOfTen(layout.decimals));
            break;
        case FieldKind::Currency:
            StoreLittle(at, units);
            break;
        default:
            FailKind(field, "a number");
    }
    MarkPresent(record, layout);
}

void FieldEncoder::SetDate(std::byte* record, std::size_t field, const calendar::Date& date) const {
    if (layout_.kinds[field] == FieldKind::DateTime) {
        SetDateTime(record, field, calendar::ToJulianDay(date), 0);
        return;
    }
    if (layout_.kinds[field] != FieldKind::Date) FailKind(field, "a date");
    if (!calendar::IsValid(date)) FailFit(field, "of a day that does not exist");
    char* at = Characters(record + At(field).offset);
    PutDigits(at, date.year, 4);
    PutDigits(at + 4, date.month, 2);
    PutDigits(at + 6, date.day, 2);
    MarkPresent(record, At(field));
}

void FieldEncoder::SetDateTime(std::byte* record, std::size_t field, std::int32_t julianDay,
                               std::int32_t milliseconds) const {
    if (layout_.kinds[field] == FieldKind::Date) {
        SetDate(record, field, calendar::FromJulianDay(julianDay));
        return;
    }
    if (layout_.kinds[field] != FieldKind::DateTime) FailKind(field, "a date");
    if (!calendar::IsValid(calendar::FromJulianDay(julianDay)) || milliseconds < 0 ||
        milliseconds >= 86'400'000)
        FailFit(field, "of a time outside of the years 1 to 9999");
    std::byte* at = record + At(field).offset;
    StoreLittle(at, julianDay);
    StoreLittle(at + 4, milliseconds);
    MarkPresent(record, At(field));
}

void FieldEncoder::SetBoolean(std::byte* record, std::size_t field, bool value) const {
    if (layout_.kinds[field] != FieldKind::Logical) FailKind(field, "a truth value");
    record[At(field).offset] = static_cast<std::byte>(value ? 'T' : 'F');
    MarkPresent(record, At(field));
}

void FieldEncoder::SetMemoBlock(std::byte* record, std::size_t field, std::uint32_t block) const {
    const FieldKind kind = layout_.kinds[field];
    if (kind != FieldKind::MemoText && kind != FieldKind::MemoBinary) FailKind(field, "a memo");
    const FieldLayout& layout = At(field);
    if (block == 0) {
        BlankField(record, field);
        return;
    }
    std::byte* at = record + layout.offset;
    if (layout.width == 4) {
        StoreLittle(at, block);
    } else if (!text::PrintUnits(block, layout.width, 0, Characters(at))) {
        FailFit(field, std::to_string(block));
    }
    MarkPresent(record, layout);
}

}  // namespace zu::dbf
