#include "tests/unit/dbfwrite/WriteTable.h"

#include <gtest/gtest.h>

#include "host/technologies/dbf/cdx/CdxChecker.h"
#include "host/technologies/dbf/write/ValueText.h"
#include "portable/text/Utf.h"

namespace zu::dbf::test {

using technologies::Value;

void MakeTable(files::FileSystem& files, Format format) {
    const std::vector<FieldDefinition> fields{{"ID", 'N', 8, 0, false},      {"NAME", 'C', 20, 0, false},
                                              {"AMOUNT", 'N', 12, 2, false}, {"BORN", 'D', 8, 0, false},
                                              {"PAID", 'L', 1, 0, false},    {"NOTE", 'M', 10, 0, false},
                                              {"CODE", 'C', 6, 0, false}};
    TableWriter writer(files, kTablePath, format, 0x03, fields, {2024, 1, 31});
    writer.Close({{"ID", "ID", "", false, false, false},
                  {"NAME", "UPPER(NAME)", "", false, false, false},
                  {"NAMEDATE", "NAME+DTOS(BORN)", "", false, false, true},
                  {"AMOUNT", "AMOUNT", "AMOUNT > 0 .AND. .NOT. DELETED()", false, false, false},
                  {"CODE", "CODE", "", true, false, false}});
}

std::unique_ptr<DbfTable> OpenTable(files::FileSystem& files,
                                    const technologies::TechnologySettings& settings) {
    return DbfTable::Open(files, kTablePath, settings);
}

Value Text(std::u16string_view text) {
    Value value;
    value.kind = Value::Kind::Text;
    value.text = text;
    return value;
}

Value Integer(std::int64_t number) {
    Value value;
    value.kind = Value::Kind::Integer;
    value.integer = number;
    return value;
}

Value Number(double number) {
    Value value;
    value.kind = Value::Kind::Double;
    value.number = number;
    return value;
}

Value DecimalValue(std::uint64_t units, std::uint8_t scale, bool negative) {
    Value value;
    value.kind = Value::Kind::Decimal;
    value.decimal = {units, 0, scale, negative};
    return value;
}

Value Day(int year, int month, int day) {
    Value value;
    value.kind = Value::Kind::DateTime;
    value.julianDay = calendar::ToJulianDay({year, month, day});
    return value;
}

Value Truth(bool truth) {
    Value value;
    value.kind = Value::Kind::Boolean;
    value.boolean = truth;
    return value;
}

Value NoValue() {
    return {};
}

std::string Shown(DbfTable& table, std::uint32_t record, std::size_t field) {
    Value value;
    table.ReadValue(record, field, value);
    return value.kind == Value::Kind::Null ? "(null)" : text::ToUtf8(write::TextOf(value));
}

std::string ShownRecord(DbfTable& table, std::uint32_t record) {
    std::string shown = table.IsDeleted(record) ? "*" : "";
    for (std::size_t field = 0; field < table.fields().size(); ++field)
        shown += (field ? "|" : "") + Shown(table, record, field);
    return shown;
}

std::uint32_t Append(DbfTable& table, std::int64_t id, std::u16string_view name) {
    const auto edit = table.NewRecord();
    edit->Set(kId, Integer(id));
    edit->Set(kName, Text(name));
    EXPECT_TRUE(edit->Save());
    return edit->record();
}

std::vector<std::uint32_t> SeekId(DbfTable& table, std::int64_t id, std::uint32_t most) {
    technologies::KeyCriterion criterion;
    criterion.value = Integer(id);
    return table.Seek(*table.FindIndex("ID"), {criterion}, most, true);
}

void DieWhileMoving(files::FaultyFiles& files, std::size_t step, files::FaultyFiles::Fault fault,
                    std::uint32_t record, std::int64_t id) {
    {
        const auto writer = OpenTable(files);
        files.FailAt(step, fault);
        try {
            const auto edit = writer->EditRecord(record);
            edit->Set(kId, Integer(id));
            edit->Set(kName, Text(u"moved to the far end"));
            edit->Save();
        } catch (const Error&) {
            // It has died on the way.
        }
    }
    files.Heal();
}

void ExpectSoundIndex(files::FileSystem& files) {
    const auto table = OpenTable(files);
    for (const auto& index : table->indexes())
        EXPECT_TRUE(index.usable) << index.name << ": " << index.reason;
    cdx::CdxFile file(files.Open("people.cdx", {}));
    RecordFile records(files.Open(kTablePath, {}), table->header());
    const TableLayout layout = TableLayout::Make(table->header(), table->codePage(), "people");
    const cdx::IndexContext context{layout.record, records, "people", table->codePage()};
    for (const auto& finding : cdx::CheckCdx(file, context))
        EXPECT_NE(finding.weight, cdx::Finding::Weight::Fault) << finding.Describe();
}

}  // namespace zu::dbf::test
