#include "host/technologies/dbf/DbfTechnology.h"

#include <limits>
#include <utility>

#include "host/technologies/dbf/DbfTable.h"
#include "host/technologies/dbf/TablePath.h"
#include "host/technologies/dbf/maintenance/TableCheck.h"
#include "host/technologies/dbf/maintenance/TableCreation.h"
#include "host/technologies/dbf/maintenance/TableRebuild.h"
#include "host/technologies/dbf/maintenance/TableRepair.h"
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
    return DbfTable::Open(files_, PathOf(database, table), settings_);
}

std::string DbfTechnology::PathOf(std::string_view database, std::string_view table) {
    return FindTable(files_, settings_.dataFolder, database, table);
}

std::vector<std::string> DbfTechnology::TableNames(std::string_view database) {
    return dbf::TableNames(files_, settings_.dataFolder, database);
}

void DbfTechnology::CreateTable(std::string_view database, std::string_view table,
                                const std::vector<technologies::FieldDescription>& fields,
                                const std::vector<technologies::IndexField>& key) {
    const std::string path = PathOfNewTable(files_, settings_.dataFolder, database, table);
    maintenance::CreateTable(files_, path, settings_, fields, key);
}

void DbfTechnology::DropTable(std::string_view database, std::string_view table) {
    maintenance::DropTable(files_, PathOf(database, table));
}

std::uint32_t DbfTechnology::Pack(std::string_view database, std::string_view table,
                                  technologies::Progress* progress) {
    return maintenance::Pack(files_, PathOf(database, table), settings_, progress);
}

void DbfTechnology::Zap(std::string_view database, std::string_view table) {
    maintenance::Zap(files_, PathOf(database, table), settings_);
}

void DbfTechnology::CreateIndex(std::string_view database, std::string_view table,
                                const std::vector<technologies::IndexField>& key,
                                technologies::Progress* progress) {
    maintenance::CreateDefaultTag(files_, PathOf(database, table), settings_, key, progress);
}

void DbfTechnology::DropIndex(std::string_view database, std::string_view table, std::string_view index) {
    maintenance::DropTag(files_, PathOf(database, table), settings_, index);
}

void DbfTechnology::Reindex(std::string_view database, std::string_view table,
                            technologies::Progress* progress) {
    maintenance::Reindex(files_, PathOf(database, table), settings_, progress);
}

technologies::CheckReport DbfTechnology::Check(std::string_view database, std::string_view table,
                                               technologies::Progress* progress) {
    return maintenance::CheckTable(files_, PathOf(database, table), settings_, progress);
}

std::vector<std::string> DbfTechnology::Repair(std::string_view database, std::string_view table,
                                               technologies::Progress* progress) {
    return maintenance::RepairTable(files_, PathOf(database, table), settings_, progress);
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
