// Makes tables through the technology, appends, changes, deletes and packs records, and says what they hold:
// NAME.json (a line a record: deletion mark and values as they were set) and NAME.orders (a line a tag: its
// name and the record numbers in the order in which we select them). check_tables.py compares.
//
// usage: write_tables OUT

#include <cstdio>
#include <exception>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "host/technologies/dbf/DbfTechnology.h"
#include "host/technologies/dbf/maintenance/TableRebuild.h"
#include "portable/calendar/Calendar.h"
#include "portable/files/File.h"
#include "tests/interop/values/ValueJson.h"

namespace {

using namespace zu;
using technologies::FieldDescription;
using technologies::FieldType;
using technologies::Value;

FieldDescription Field(const char* name, FieldType type, int size, int decimals = 0, bool nullable = false) {
    FieldDescription field;
    field.name = name;
    field.type = type;
    field.size = size;
    field.decimals = decimals;
    field.nullable = nullable;
    return field;
}

/// A record as it should be.
struct Intended {
    std::vector<Value> values;
    bool deleted = false;
};

class Writer {
public:
    Writer(std::string folder, std::string name, const char* format, std::vector<FieldDescription> fields)
        : folder_(std::move(folder)),
          name_(std::move(name)),
          fields_(std::move(fields)),
          settings_(Settings(format)),
          technology_(files::SystemFiles(), settings_) {}

    void Run() {
        technology_.CreateTable(folder_, name_, fields_, {{"NAME", false}});
        Append(300);
        AddTags();
        Append(200);
        Change(250);
        Delete(60);
        Append(40);
        technology_.Pack(folder_, name_, nullptr);
        std::erase_if(records_, [](const Intended& record) { return record.deleted; });
        Change(80);
        Delete(30);
        WriteExpectations();
    }

private:
    static technologies::TechnologySettings Settings(const char* format) {
        technologies::TechnologySettings settings;
        settings.newTableFormat = format;
        return settings;
    }
    std::unique_ptr<technologies::Table> Open() { return technology_.OpenTable(folder_, name_); }

    void AddTags() {
        const std::string path = folder_ + "/" + name_ + ".dbf";
        for (const dbf::cdx::TagDefinition& tag :
             {dbf::cdx::TagDefinition{"ID", "ID", "", false, false, false},
              {"DAY", "DAY", "", false, false, false},
              {"NAMEDOWN", "NAME", "", false, false, true},
              {"LIVING", "ID", ".NOT. DELETED()", false, false, false}})
            dbf::maintenance::CreateTag(files::SystemFiles(), path, settings_, tag);
    }

    void Append(int count) {
        const auto table = Open();
        for (int i = 0; i < count; ++i) {
            Intended record;
            const auto edit = table->NewRecord();
            for (std::size_t field = 0; field < fields_.size(); ++field) {
                record.values.push_back(RandomValue(fields_[field]));
                edit->Set(field, record.values.back());
            }
            if (!edit->Save()) throw std::runtime_error("a new record was not saved");
            records_.push_back(record);
        }
    }

    void Change(int count) {
        const auto table = Open();
        for (int i = 0; i < count; ++i) {
            const std::size_t record = Any();
            const std::size_t field = random_() % fields_.size();
            const auto edit = table->EditRecord(static_cast<std::uint32_t>(record + 1));
            records_[record].values[field] = RandomValue(fields_[field]);
            edit->Set(field, records_[record].values[field]);
            if (!edit->Save()) throw std::runtime_error("a record was not saved");
        }
    }

    void Delete(int count) {
        const auto table = Open();
        for (int i = 0; i < count; ++i) {
            const std::size_t record = Any();
            const auto edit = table->EditRecord(static_cast<std::uint32_t>(record + 1));
            edit->SetDeleted(true);
            if (!edit->Save()) throw std::runtime_error("a record was not deleted");
            records_[record].deleted = true;
        }
    }

    std::size_t Any() { return random_() % records_.size(); }

    std::u16string RandomText(std::size_t most) {
        static constexpr std::u16string_view kLetters = u"abcdefghijklmnopqrstuvwxyzABCDEXYZ0189äöüßÉñ€ ,.-";
        std::u16string text;
        for (std::size_t i = random_() % (most + 1); i > 0; --i)
            text.push_back(kLetters[random_() % kLetters.size()]);
        // Readers differ in what they take off the ends.
        while (!text.empty() && (text.back() == u' ' || text.front() == u' '))
            text.back() == u' ' ? text.pop_back() : static_cast<void>(text.erase(0, 1));
        return text;
    }

    Value RandomValue(const FieldDescription& field) {
        Value value;
        if (field.nullable && random_() % 5 == 0) return value;
        switch (field.type) {
            case FieldType::Decimal: {
                value.kind = Value::Kind::Decimal;
                std::uint64_t limit = 1;
                for (int i = 0; i < field.size - (field.decimals ? 2 : 1); ++i)
                    limit *= 10;
                value.decimal.low = random_() % limit;
                value.decimal.scale = static_cast<std::uint8_t>(field.decimals);
                value.decimal.negative = value.decimal.low != 0 && random_() % 3 == 0;
                return value;
            }
            case FieldType::Date:
                value.kind = Value::Kind::DateTime;
                value.julianDay = 2415386 + static_cast<std::int32_t>(random_() % 50000);
                if (field.size != 8) value.milliseconds = static_cast<std::int32_t>(random_() % 86400) * 1000;
                return value;
            case FieldType::Boolean:
                value.kind = Value::Kind::Boolean;
                value.boolean = random_() % 2 == 0;
                return value;
            case FieldType::Integer32:
                value.kind = Value::Kind::Integer;
                value.integer = static_cast<std::int32_t>(random_());
                return value;
            case FieldType::Double:
                value.kind = Value::Kind::Double;
                value.number = (static_cast<double>(random_()) - 2e9) / 256;
                return value;
            case FieldType::Currency:
                value.kind = Value::Kind::Currency;
                value.integer = static_cast<std::int64_t>(random_()) * 4099 - 8'000'000'000'000;
                return value;
            default:
                value.kind = Value::Kind::Text;
                value.text = RandomText(
                    field.type == FieldType::LongText ? 1500 : static_cast<std::size_t>(field.size));
                return value;
        }
    }

    void WriteExpectations() {
        std::ofstream values(folder_ + "/" + name_ + ".json");
        for (std::size_t i = 0; i < records_.size(); ++i) {
            std::string line = "{\"record\":" + std::to_string(i + 1) +
                               ",\"deleted\":" + (records_[i].deleted ? "true" : "false") + ",\"values\":[";
            for (std::size_t field = 0; field < fields_.size(); ++field) {
                if (field) line += ',';
                interop::AppendJsonValue(records_[i].values[field], line);
            }
            values << line << "]}\n";
        }
        const auto table = Open();
        std::ofstream orders(folder_ + "/" + name_ + ".orders");
        for (std::size_t i = 0; i < table->indexes().size(); ++i) {
            technologies::Selection selection;
            selection.index = i;
            selection.includeDeleted = true;
            orders << table->indexes()[i].name;
            for (const std::uint32_t record : table->Select(selection))
                orders << ' ' << record;
            orders << '\n';
        }
    }

    std::string folder_;
    std::string name_;
    std::vector<FieldDescription> fields_;
    technologies::TechnologySettings settings_;
    dbf::DbfTechnology technology_;
    std::vector<Intended> records_;
    std::mt19937 random_{4711};
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: write_tables OUT\n", stderr);
        return 64;
    }
    const std::string out = arguments[1];
    const std::vector<FieldDescription> plain{
        Field("ID", FieldType::Decimal, 7),         Field("NAME", FieldType::Text, 24),
        Field("AMOUNT", FieldType::Decimal, 12, 2), Field("DAY", FieldType::Date, 8),
        Field("FLAG", FieldType::Boolean, 1),       Field("NOTE", FieldType::LongText, 10)};
    std::vector<FieldDescription> all = plain;
    for (const FieldDescription& field :
         {Field("INT", FieldType::Integer32, 11), Field("DBL", FieldType::Double, 20, 4),
          Field("MONEY", FieldType::Currency, 21, 4), Field("MOMENT", FieldType::Date, 14),
          Field("MAYBE", FieldType::Text, 6, 0, true), Field("MORE", FieldType::LongText, 10)})
        all.push_back(field);
    try {
        Writer(out, "plain", "dBASE III", plain).Run();
        Writer(out, "foxpro", "FoxPro 2", plain).Run();
        Writer(out, "visual", "Visual FoxPro", all).Run();
        Writer(out, "chosen", "", plain).Run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "write_tables: %s\n", error.what());
        return 1;
    }
    return 0;
}
