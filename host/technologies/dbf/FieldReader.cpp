#include "host/technologies/dbf/FieldReader.h"

#include <bit>
#include <string_view>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/MemoFields.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/NumberText.h"

namespace zu::dbf {

namespace {

using expression::FieldLayout;
using technologies::Value;

constexpr std::int32_t kDayMilliseconds = 86'400'000;
/// Years 1 to 9999.
constexpr std::int32_t kFirstDay = 1721426;
constexpr std::int32_t kLastDay = 5373484;

std::string_view Text(const std::byte* at, std::size_t length) noexcept {
    return {reinterpret_cast<const char*>(at), length};
}

std::string_view WithoutPadding(std::string_view text) noexcept {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\0'))
        text.remove_suffix(1);
    return text;
}

bool BitAt(const std::byte* flags, std::int32_t bit) noexcept {
    return (std::to_integer<unsigned>(flags[bit / 8]) >> (bit % 8) & 1U) != 0;
}

void SetText(std::string_view bytes, const text::CodePage& codePage, Value& out) {
    out.kind = Value::Kind::Text;
    out.text.clear();
    codePage.Decode(bytes, out.text);
}

void SetBinary(std::string_view bytes, Value& out) {
    out.kind = Value::Kind::Binary;
    out.binary.assign(bytes.begin(), bytes.end());
}

void SetInteger(std::int64_t value, Value& out) noexcept {
    out.kind = Value::Kind::Integer;
    out.integer = value;
}

void SetDouble(double value, Value& out) noexcept {
    out.kind = Value::Kind::Double;
    out.number = value;
}

void SetDateTime(std::int32_t day, std::int32_t milliseconds, Value& out) noexcept {
    if (day < kFirstDay || day > kLastDay) return;  // an empty date; `out` is Null
    out.kind = Value::Kind::DateTime;
    out.julianDay = day;
    out.milliseconds = milliseconds;
}

/// One more decimal place with the same value; false when 96 bits do not hold it.
bool AddPlace(technologies::Decimal& decimal) noexcept {
    const std::uint64_t lower = (decimal.low & 0xFFFFFFFF) * 10;
    const std::uint64_t middle = (decimal.low >> 32) * 10 + (lower >> 32);
    const std::uint64_t upper = std::uint64_t{decimal.high} * 10 + (middle >> 32);
    if (upper > 0xFFFFFFFF) return false;
    decimal.low = (middle << 32) | (lower & 0xFFFFFFFF);
    decimal.high = static_cast<std::uint32_t>(upper);
    ++decimal.scale;
    return true;
}

void ReadDate(std::string_view digits, Value& out) noexcept {
    int number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return;
        number = number * 10 + (c - '0');
    }
    const calendar::Date date{number / 10000, number / 100 % 100, number % 100};
    if (calendar::IsValid(date)) SetDateTime(calendar::ToJulianDay(date), 0, out);
}

void ReadLogical(char c, Value& out) noexcept {
    const bool isTrue = c == 'T' || c == 't' || c == 'Y' || c == 'y';
    const bool isFalse = c == 'F' || c == 'f' || c == 'N' || c == 'n';
    if (!isTrue && !isFalse) return;
    out.kind = Value::Kind::Boolean;
    out.boolean = isTrue;
}

void ReadDateTime(const std::byte* at, Value& out) noexcept {
    auto day = LoadLittle<std::int32_t>(at);
    auto milliseconds = LoadLittle<std::int32_t>(at + 4);
    if (milliseconds < 0 || milliseconds > kDayMilliseconds) milliseconds = 0;
    // FoxPro keeps whole seconds but reaches them by floating point, one millisecond off at times.
    const std::int32_t remainder = milliseconds % 1000;
    if (remainder == 1) --milliseconds;
    if (remainder == 999) ++milliseconds;
    if (milliseconds == kDayMilliseconds && day < kLastDay) {
        milliseconds = 0;
        ++day;
    }
    SetDateTime(day, milliseconds, out);
}

void ReadInteger7(const std::byte* at, Value& out) noexcept {
    const std::uint32_t stored = LoadBig32(at);
    if (stored != 0) SetInteger(static_cast<std::int32_t>(stored ^ 0x80000000U), out);
}

void ReadDouble7(const std::byte* at, Value& out) noexcept {
    const std::uint64_t stored = LoadBig64(at);
    if (stored == 0) return;
    const bool positive = (stored >> 63) != 0;
    SetDouble(std::bit_cast<double>(positive ? stored ^ (std::uint64_t{1} << 63) : ~stored), out);
}

}  // namespace

bool FieldReader::IsNull(const std::byte* record, const FieldLayout& field) const noexcept {
    return field.nullBit >= 0 && BitAt(record + layout_.record.nullFlagsOffset, field.nullBit);
}

/// Bytes in use of a variable-length field.
std::size_t FieldReader::LengthOf(const std::byte* record, const FieldLayout& field) const noexcept {
    if (field.lengthBit < 0 || !BitAt(record + layout_.record.nullFlagsOffset, field.lengthBit))
        return field.width;
    const auto length = std::to_integer<std::uint32_t>(record[field.offset + field.width - 1]);
    return length < field.width ? length : field.width - 1;
}

void FieldReader::ReadNumber(const std::byte* at, const FieldLayout& field, Value& out) const {
    text::DecimalDigits digits;
    const text::NumberForm form = text::ParseDecimal(Text(at, field.width), digits);
    if (form != text::NumberForm::Number && blankNumbersAreNull_) return;
    out.kind = Value::Kind::Decimal;
    out.decimal = {digits.low, digits.high, digits.scale, digits.negative};
    while (out.decimal.scale < field.decimals && out.decimal.scale < 28 && AddPlace(out.decimal)) {
    }
}

void FieldReader::ReadFloat(const std::byte* at, const FieldLayout& field, Value& out) const {
    double number = 0;
    const text::NumberForm form = text::ParseNumber(Text(at, field.width), number);
    if (form != text::NumberForm::Number && blankNumbersAreNull_) return;
    SetDouble(number, out);
}

void FieldReader::ReadMemo(const std::byte* record, std::size_t field, bool text, Value& out) const {
    if (!memos_) return;
    std::string content;
    const MemoOutcome outcome = memos_->Fetch(field, record, content);
    if (outcome == MemoOutcome::Unreadable) return;
    if (text) {
        SetText(content, *layout_.record.codePage, out);
    } else {
        SetBinary(content, out);
    }
}

void FieldReader::Read(const std::byte* record, std::size_t position, Value& out) const {
    const FieldLayout& field = layout_.record.fields[position];
    const std::byte* at = record + field.offset;
    out.kind = Value::Kind::Null;
    if (IsNull(record, field)) return;
    switch (layout_.kinds[position]) {
        case FieldKind::Character:
            SetText(WithoutPadding(Text(at, field.width)), *layout_.record.codePage, out);
            break;
        case FieldKind::Varchar:
            SetText(WithoutPadding(Text(at, LengthOf(record, field))), *layout_.record.codePage, out);
            break;
        case FieldKind::Varbinary:
            SetBinary(Text(at, LengthOf(record, field)), out);
            break;
        case FieldKind::Number:
            ReadNumber(at, field, out);
            break;
        case FieldKind::Float:
            ReadFloat(at, field, out);
            break;
        case FieldKind::Date:
            ReadDate(Text(at, field.width), out);
            break;
        case FieldKind::Logical:
            ReadLogical(static_cast<char>(*at), out);
            break;
        case FieldKind::Integer:
            SetInteger(LoadLittle<std::int32_t>(at), out);
            break;
        case FieldKind::Integer7:
            ReadInteger7(at, out);
            break;
        case FieldKind::Double:
            SetDouble(LoadLittle<double>(at), out);
            break;
        case FieldKind::Double7:
            ReadDouble7(at, out);
            break;
        case FieldKind::Currency:
            out.kind = Value::Kind::Currency;
            out.integer = LoadLittle<std::int64_t>(at);
            break;
        case FieldKind::DateTime:
            ReadDateTime(at, out);
            break;
        case FieldKind::MemoText:
            ReadMemo(record, position, true, out);
            break;
        case FieldKind::MemoBinary:
            ReadMemo(record, position, false, out);
            break;
        case FieldKind::Raw:
            SetBinary(Text(at, field.width), out);
            break;
    }
}

}  // namespace zu::dbf
