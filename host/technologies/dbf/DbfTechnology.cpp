#include "host/technologies/dbf/DbfTechnology.h"

#include <limits>
#include <utility>

#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/TablePath.h"
#include "portable/error/Error.h"
#include "portable/text/CodePage.h"

namespace zu::dbf {

namespace {

using technologies::Value;

/// Twice the Julian day of 2449-12-31: the descending form of every usual date is a positive number.
constexpr std::int32_t kDescendingDays = 5231808;
constexpr double kDayMilliseconds = 86'400'000;

std::u16string Complement(std::u16string_view text, const text::CodePage& codePage) {
    std::size_t bad = 0;
    auto bytes = codePage.Encode(text, &bad);
    if (!bytes) {
        throw Error(ErrorKind::InvalidArgument, "The character at position " + std::to_string(bad + 1) +
                                                    " of the text is not in code page " +
                                                    std::to_string(codePage.number()) +
                                                    "; the text has no descending form.");
    }
    for (char& byte : *bytes)
        byte = static_cast<char>(~static_cast<unsigned char>(byte));
    std::u16string complement;
    codePage.Decode(*bytes, complement);
    return complement;
}

void Negate(Value& value) {
    if (value.integer == std::numeric_limits<std::int64_t>::min()) {
        if (value.kind == Value::Kind::Currency) {
            throw Error(ErrorKind::Overflow, "The least currency value has no descending form.");
        }
        value.kind = Value::Kind::Double;
        value.number = -static_cast<double>(value.integer);
        return;
    }
    value.integer = -value.integer;
}

}  // namespace

DbfTechnology::DbfTechnology(files::FileSystem& files, technologies::TechnologySettings settings)
    : files_(files), settings_(std::move(settings)) {}

std::unique_ptr<technologies::Table> DbfTechnology::OpenTable(std::string_view database,
                                                              std::string_view table) {
    return DbfTable::Open(files_, FindTable(files_, settings_.dataFolder, database, table), settings_);
}

Value DbfTechnology::Descend(const Value& value) {
    Value result = value;
    switch (value.kind) {
        case Value::Kind::Null:
            break;
        case Value::Kind::Boolean:
            result.boolean = !value.boolean;
            break;
        case Value::Kind::Integer:
        case Value::Kind::Currency:
            Negate(result);
            break;
        case Value::Kind::Double:
            result.number = value.number == 0 ? 0 : -value.number;
            break;
        case Value::Kind::Decimal:
            result.decimal.negative =
                !value.decimal.negative && (value.decimal.low != 0 || value.decimal.high != 0);
            break;
        case Value::Kind::DateTime:
            if (value.milliseconds == 0) {
                result.kind = Value::Kind::Integer;
                result.integer = kDescendingDays - value.julianDay;
            } else {
                result.kind = Value::Kind::Double;
                result.number = kDescendingDays - (value.julianDay + value.milliseconds / kDayMilliseconds);
            }
            break;
        case Value::Kind::Text: {
            const text::CodePage* codePage = text::CodePage::Find(settings_.codePage);
            result.text = Complement(value.text, codePage ? *codePage : text::CodePage::Default());
            break;
        }
        case Value::Kind::Binary:
            for (std::uint8_t& byte : result.binary)
                byte = static_cast<std::uint8_t>(~byte);
            break;
    }
    return result;
}

}  // namespace zu::dbf
