#include "host/technologies/dbf/maintenance/FieldCheck.h"

#include <algorithm>
#include <string_view>

#include "host/technologies/dbf/ByteOrder.h"
#include "host/technologies/dbf/MemoFields.h"
#include "portable/calendar/Calendar.h"
#include "portable/text/NumberText.h"

namespace zu::dbf::maintenance {
namespace {

constexpr std::int32_t kDayMilliseconds = 86'400'000;
constexpr std::int32_t kFirstDay = 1721426;  // 0001-01-01
constexpr std::int32_t kLastDay = 5373484;   // 9999-12-31

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(std::string_view(" \0", 2)) == std::string_view::npos;
}

// The bytes with everything that is no plain character replaced, for a message.
std::string Shown(std::string_view bytes) {
    std::string shown = "\"";
    for (const char c : bytes.substr(0, 40))
        shown += c >= 0x20 && c < 0x7F ? c : '?';
    return shown + "\"";
}

std::string DateFault(std::string_view text) {
    if (text.find_first_not_of(std::string_view(" 0\0", 3)) == std::string_view::npos) return {};
    int number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return "holds " + Shown(text) + ", which is no date";
        number = number * 10 + (c - '0');
    }
    const calendar::Date date{number / 10000, number / 100 % 100, number % 100};
    return calendar::IsValid(date) ? std::string() : "holds " + Shown(text) + ", which is no date";
}

std::string NumberFault(std::string_view text) {
    text::DecimalDigits digits;
    if (text::ParseDecimal(text, digits) != text::NumberForm::Unreadable) return {};
    double number = 0;
    if (text::ParseNumber(text, number) != text::NumberForm::Unreadable) return {};
    const bool stars = text.find('*') != std::string_view::npos;
    return stars ? "holds stars: the number did not fit when it was written"
                 : "holds " + Shown(text) + ", which is no number";
}

std::string MomentFault(const std::byte* at) {
    const auto day = LoadLittle<std::int32_t>(at);
    const auto milliseconds = LoadLittle<std::int32_t>(at + 4);
    if (day == 0) return {};
    if (day < kFirstDay || day > kLastDay) return "holds the day number " + std::to_string(day);
    if (milliseconds < 0 || milliseconds > kDayMilliseconds)
        return "holds a time of " + std::to_string(milliseconds) + " milliseconds";
    return {};
}

std::string LengthFault(const expression::FieldLayout& field, const std::byte* record,
                        std::uint32_t nullFlags) {
    if (field.lengthBit < 0) return {};
    const auto bits =
        std::to_integer<unsigned>(record[nullFlags + static_cast<std::uint32_t>(field.lengthBit) / 8]);
    if ((bits >> (field.lengthBit % 8) & 1U) == 0) return {};
    const auto length = std::to_integer<std::uint32_t>(record[field.offset + field.width - 1]);
    if (length < field.width) return {};
    return "states a length of " + std::to_string(length) + " bytes in " + std::to_string(field.width);
}

}  // namespace

std::string FaultIn(const TableLayout& layout, std::size_t position, const std::byte* record) {
    const expression::FieldLayout& field = layout.record.fields[position];
    const std::byte* at = record + field.offset;
    const std::string_view text(reinterpret_cast<const char*>(at), field.width);
    switch (layout.kinds[position]) {
        case FieldKind::Number:
        case FieldKind::Float:
            return NumberFault(text);
        case FieldKind::Date:
            return DateFault(text);
        case FieldKind::Logical:
            if (IsBlank(text) || std::string_view("TtYyFfNn?").find(text[0]) != std::string_view::npos)
                return {};
            return "holds " + Shown(text) + ", which is no logical value";
        case FieldKind::DateTime:
            return MomentFault(at);
        case FieldKind::Varchar:
        case FieldKind::Varbinary:
            return LengthFault(field, record, layout.record.nullFlagsOffset);
        case FieldKind::MemoText:
        case FieldKind::MemoBinary:
            return MemoBlock(at, field.width) ? std::string() : "holds no number of a memo";
        default:
            return {};
    }
}

}  // namespace zu::dbf::maintenance
