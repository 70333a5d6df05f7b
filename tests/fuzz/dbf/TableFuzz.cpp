// Any bytes as a table file: opened, described, read, selected from. Allowed are errors that name the file.

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "host/technologies/dbf/DbfTable.h"
#include "portable/error/Error.h"
#include "portable/files/MemoryFiles.h"

namespace {

constexpr std::uint32_t kRecords = 40;

void ReadRecord(zu::dbf::DbfTable& table, std::uint32_t record) {
    zu::technologies::Value value;
    table.IsDeleted(record);
    for (std::size_t field = 0; field < table.fields().size(); ++field)
        table.ReadValue(record, field, value);
}

void UseTable(zu::dbf::DbfTable& table) {
    const std::uint32_t count = table.RecordCount();
    for (std::uint32_t record = 1; record <= std::min(count, kRecords); ++record)
        ReadRecord(table, record);
    if (count > kRecords) ReadRecord(table, count);
    zu::technologies::Selection selection;
    selection.includeDeleted = true;
    if (table.Select(selection).size() != count) std::abort();
    selection.condition = u"RECNO() > 1";
    if (table.Select(selection).size() + 1 != std::max(count, 1U)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zu::files::MemoryFiles files;
    files.AllowMapping(size % 2 == 0);
    files.Put("t.dbf", std::as_bytes(std::span(data, size)));
    try {
        UseTable(*zu::dbf::DbfTable::Open(files, "t.dbf", {}));
    } catch (const zu::Error& error) {
        if (std::string_view(error.what()).find("t.dbf") == std::string_view::npos) std::abort();
    }
    return 0;
}
