// zudump FOLDER TABLE: prints a table as JSON lines for comparison with other readers. The first line
// describes the fields, each further one is a record: its number, its deleted mark, its values in field
// order.

#include <cstdint>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>

#include "host/technologies/Table.h"
#include "host/technologies/Technology.h"
#include "host/technologies/dbf/DbfTechnology.h"
#include "portable/files/File.h"
#include "tests/interop/values/ValueJson.h"

namespace {

void PrintFields(zu::technologies::Table& table) {
    std::string line = "{\"fields\":[";
    for (const zu::technologies::FieldDescription& field : table.fields()) {
        if (line.back() != '[') line += ',';
        line += "{\"name\":";
        zu::interop::AppendJsonText(field.name, line);
        line += ",\"type\":" + std::to_string(static_cast<int>(field.type)) + "}";
    }
    line += "],\"warnings\":[";
    for (const std::string& warning : table.warnings()) {
        if (line.back() != '[') line += ',';
        zu::interop::AppendJsonText(warning, line);
    }
    line += "]}\n";
    std::fputs(line.c_str(), stdout);
}

void PrintRecords(zu::technologies::Table& table) {
    const std::uint32_t count = table.RecordCount();
    const std::size_t fields = table.fields().size();
    zu::technologies::Value value;
    std::string line;
    for (std::uint32_t record = 1; record <= count; ++record) {
        line = "{\"record\":" + std::to_string(record);
        line +=
            table.IsDeleted(record) ? ",\"deleted\":true,\"values\":[" : ",\"deleted\":false,\"values\":[";
        for (std::size_t field = 0; field < fields; ++field) {
            if (field > 0) line += ',';
            table.ReadValue(record, field, value);
            zu::interop::AppendJsonValue(value, line);
        }
        line += "]}\n";
        std::fwrite(line.data(), 1, line.size(), stdout);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs("usage: zudump FOLDER TABLE\n", stderr);
        return 64;
    }
    try {
        zu::technologies::TechnologySettings settings;
        settings.blankNumbersAreNull = true;  // the other readers tell blank from 0
        zu::dbf::DbfTechnology technology(zu::files::SystemFiles(), settings);
        const std::unique_ptr<zu::technologies::Table> table =
            technology.OpenTable(arguments[1], arguments[2]);
        PrintFields(*table);
        PrintRecords(*table);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "zudump: %s\n", failure.what());
        return 1;
    }
}
