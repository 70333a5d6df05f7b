#include "MemoryTechnology.h"

#include <map>
#include <utility>

#include "MemoryEdit.h"
#include "host/service/TechnologyCatalogue.h"
#include "portable/error/Error.h"

namespace zu::test {
namespace {

using technologies::FieldType;
using technologies::Value;

std::map<std::string, MemoryData>& Tables() {
    static std::map<std::string, MemoryData> tables;
    return tables;
}

class MemoryTable final : public technologies::Table {
public:
    explicit MemoryTable(MemoryData& data) : data_(data) {
        ++data_.opened;
        ++data_.open;
    }
    MemoryTable(const MemoryTable&) = delete;
    MemoryTable& operator=(const MemoryTable&) = delete;
    ~MemoryTable() override { --data_.open; }

    const std::string& name() const noexcept override { return data_.name; }
    const std::vector<technologies::FieldDescription>& fields() const noexcept override {
        return data_.fields;
    }
    std::uint32_t RecordCount() override { return static_cast<std::uint32_t>(data_.rows.size()); }
    bool isUpdateable() const noexcept override { return data_.writable; }
    bool IsDeleted(std::uint32_t record) override { return data_.deleted.at(record - 1); }
    void ReadValue(std::uint32_t record, std::size_t field, Value& out) override {
        if (field == 0 && data_.name == "DAMAGED")
            throw Error(ErrorKind::Damaged,
                        "Table DAMAGED, record " + std::to_string(record) + ", field NAME: no");
        out = data_.rows.at(record - 1).at(field);
    }
    const std::vector<technologies::IndexDescription>& indexes() override { return data_.indexes; }
    std::optional<std::size_t> FindIndex(std::string_view name) override {
        for (std::size_t i = 0; i < data_.indexes.size(); ++i)
            if (data_.indexes[i].name == name) return i;
        return std::nullopt;
    }
    std::optional<std::size_t> DefaultIndex() override {
        for (std::size_t i = 0; i < data_.indexes.size(); ++i)
            if (data_.indexes[i].usable) return i;
        return std::nullopt;
    }
    std::vector<std::uint32_t> Select(const technologies::Selection& selection) override {
        data_.lastSelection = selection;
        if (selection.condition == u"broken") throw Error(ErrorKind::Syntax, "expected a value", 4);
        if (selection.condition == u"unreadable") throw Error(ErrorKind::IoFailure, "the disk has a scratch");
        return Matching(selection.condition, selection.maxRecords, selection.includeDeleted);
    }
    std::vector<std::uint32_t> Seek(std::size_t index,
                                    const std::vector<technologies::KeyCriterion>& criteria,
                                    std::uint32_t maxRecords, bool includeDeleted) override {
        data_.lastIndex = index;
        data_.lastCriteria = criteria;
        data_.lastLimit = maxRecords;
        data_.lastDeletedWanted = includeDeleted;
        std::vector<std::uint32_t> found;
        for (std::uint32_t i = 1; i <= data_.rows.size(); ++i)
            if (!criteria.empty() && data_.rows[i - 1][0].text == criteria[0].value.text) found.push_back(i);
        return found;
    }
    std::unique_ptr<technologies::RecordEdit> EditRecord(std::uint32_t record) override {
        return std::make_unique<MemoryEdit>(data_, record);
    }
    std::unique_ptr<technologies::RecordEdit> NewRecord() override {
        return std::make_unique<MemoryEdit>(data_, 0);
    }
    const std::vector<std::string>& warnings() const noexcept override { return data_.warnings; }
    std::vector<technologies::TableFact> Facts() override {
        return {{"Format", "memory"}, {"Note", "\xC3\xA4"}};
    }

private:
    std::vector<std::uint32_t> Matching(const std::u16string& condition, std::uint32_t limit,
                                        bool deleted) const {
        std::vector<std::uint32_t> records;
        for (std::uint32_t i = 1; i <= data_.rows.size(); ++i) {
            if (data_.deleted[i - 1] && !deleted) continue;
            if (condition == u"even" && i % 2) continue;
            if (condition == u"odd" && i % 2 == 0) continue;
            if (limit && records.size() >= limit) break;
            records.push_back(i);
        }
        return records;
    }

    MemoryData& data_;
};

technologies::FieldDescription Field(const char* name, FieldType type, int size, int decimals = 0) {
    technologies::FieldDescription field;
    field.name = name;
    field.type = type;
    field.size = size;
    field.decimals = decimals;
    field.displayWidth = size;
    field.rightAligned = type == FieldType::Decimal;
    return field;
}

std::vector<Value> Row(std::u16string_view name, std::uint64_t age, std::uint64_t pay, std::int32_t born,
                       bool active) {
    Value date;
    if (born) {
        date.kind = Value::Kind::DateTime;
        date.julianDay = born;
    }
    Value flag;
    flag.kind = Value::Kind::Boolean;
    flag.boolean = active;
    return {TextValue(name), DecimalValue(age, 0), DecimalValue(pay, 2), date, flag};
}

technologies::IndexDescription Index(const char* name, std::vector<technologies::KeyPart> parts) {
    technologies::IndexDescription index;
    index.name = name;
    index.expression = parts.at(0).name;
    index.parts = std::move(parts);
    return index;
}

MemoryData Standard(const std::string& name) {
    MemoryData data;
    data.name = name;
    data.fields = {Field("NAME", FieldType::Text, 10), Field("AGE", FieldType::Decimal, 3),
                   Field("PAY", FieldType::Decimal, 10, 2), Field("BORN", FieldType::Date, 8),
                   Field("ACTIVE", FieldType::Boolean, 1)};
    constexpr std::int32_t kDay = 2440588;  // 1970-01-01
    data.rows = {Row(u"Anna", 31, 123450, kDay, true), Row(u"Bert", 44, 99, kDay + 1, false),
                 Row(u"Carl", 58, 0, 0, true), Row(u"Dora", 27, 500000, kDay + 3, false),
                 Row(u"Emil", 61, 1, kDay + 4, true)};
    data.deleted = {false, false, true, false, false};
    data.indexes = {Index("NAME", {{"NAME", FieldType::Text, false}}),
                    Index("BOTH", {{"NAME", FieldType::Text, false}, {"AGE", FieldType::Decimal, true}}),
                    Index("DAY", {{"DTOS(BORN)", FieldType::Text, false}})};
    return data;
}

std::unique_ptr<technologies::Technology> MakeMemory(files::FileSystem& files,
                                                     const technologies::TechnologySettings& settings) {
    return std::make_unique<MemoryTechnology>(files, settings);
}

}  // namespace

Value TextValue(std::u16string_view text) {
    Value value;
    value.kind = Value::Kind::Text;
    value.text = text;
    return value;
}

Value DecimalValue(std::uint64_t units, std::uint8_t scale) {
    Value value;
    value.kind = Value::Kind::Decimal;
    value.decimal.low = units;
    value.decimal.scale = scale;
    return value;
}

void MemoryTechnology::Install() {
    static const bool added = (host::TechnologyCatalogue::Add("MEM", &MakeMemory), true);
    static_cast<void>(added);
    Tables().clear();
}

MemoryData& MemoryTechnology::Table(const std::string& name) {
    return Tables().try_emplace(name, Standard(name)).first->second;
}

std::unique_ptr<technologies::Table> MemoryTechnology::OpenTable(std::string_view database,
                                                                 std::string_view table) {
    lastSettings = settings_;
    lastDatabase = database;
    if (table == "MISSING") throw Error(ErrorKind::NotFound, "there is no such table");
    MemoryData& data = Table(std::string(table));
    if (!data.file.empty()) files_.Open(data.file, {});
    return std::make_unique<MemoryTable>(data);
}

Value MemoryTechnology::Descend(const Value& value) {
    Value result = value;
    if (value.kind == Value::Kind::Integer) result.integer = -value.integer;
    if (value.kind == Value::Kind::Double) result.number = -value.number;
    if (value.kind == Value::Kind::Text) result.text = u"~" + value.text;
    return result;
}

void MemoryTechnology::Note(const char* work, std::string_view database, std::string_view table) {
    lastWork = std::string(work) + " " + std::string(database) + " " + std::string(table);
    if (table == "MISSING") throw Error(ErrorKind::NotFound, "there is no such table");
    const auto found = Tables().find(std::string(table));
    if (found != Tables().end() && found->second.open > 0)
        throw Error(ErrorKind::Locked, "the table is in use");
}

std::vector<std::string> MemoryTechnology::TableNames(std::string_view database) {
    Note("TableNames", database, "");
    return {"ORDERS", "PEOPLE"};
}

void MemoryTechnology::CreateTable(std::string_view database, std::string_view table,
                                   const std::vector<technologies::FieldDescription>& fields,
                                   const std::vector<technologies::IndexField>& key) {
    Note("CreateTable", database, table);
    lastFields = fields;
    lastKey = key;
}

void MemoryTechnology::DropTable(std::string_view database, std::string_view table) {
    Note("DropTable", database, table);
}

std::uint32_t MemoryTechnology::Pack(std::string_view database, std::string_view table,
                                     technologies::Progress*) {
    Note("Pack", database, table);
    return 1;
}

void MemoryTechnology::Zap(std::string_view database, std::string_view table) {
    Note("Zap", database, table);
}

void MemoryTechnology::CreateIndex(std::string_view database, std::string_view table,
                                   const std::vector<technologies::IndexField>& key,
                                   technologies::Progress*) {
    Note("CreateIndex", database, table);
    lastKey = key;
}

void MemoryTechnology::DropIndex(std::string_view database, std::string_view table, std::string_view index) {
    Note("DropIndex", database, table);
    if (index != "NAME") throw Error(ErrorKind::NotFound, "no index " + std::string(index));
}

void MemoryTechnology::Reindex(std::string_view database, std::string_view table, technologies::Progress*) {
    Note("Reindex", database, table);
}

technologies::CheckReport MemoryTechnology::Check(std::string_view database, std::string_view table,
                                                  technologies::Progress*) {
    Note("Check", database, table);
    return report;
}

std::vector<std::string> MemoryTechnology::Repair(std::string_view database, std::string_view table,
                                                  technologies::Progress*) {
    Note("Repair", database, table);
    return report.findings;
}

}  // namespace zu::test
