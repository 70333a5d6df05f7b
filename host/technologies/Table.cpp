#include "host/technologies/Table.h"

namespace zu::technologies {
namespace {

bool MarkRecord(Table& table, std::uint32_t number, bool deleted) {
    // A mark that another process changes at the same moment has only one other state to go to, so the
    // second look is the last one, unless somebody changes it to and fro.
    constexpr int kMostTries = 8;
    for (int i = 0; i < kMostTries; ++i) {
        const auto edit = table.EditRecord(number);
        if (edit->isDeleted() == deleted) return false;
        edit->SetDeleted(deleted);
        if (edit->Save()) return true;
    }
    throw Error(ErrorKind::Conflict, "Another process keeps changing the deletion mark of record " +
                                         std::to_string(number) + " of table " + table.name());
}

}  // namespace

void Table::MarkRecords(std::span<const std::uint32_t> records, bool deleted, MarkOutcome& outcome) {
    for (const std::uint32_t record : records) {
        if (MarkRecord(*this, record, deleted)) ++outcome.changed;
        ++outcome.handled;
    }
}

bool Table::ReadRow(std::uint32_t record, std::span<const std::size_t> chosen, RowCells& out) {
    for (const std::size_t field : chosen) {
        ReadValue(record, field, out.scratch());
        if (!out.Add(out.scratch(), fields()[field].type)) return false;
    }
    return true;
}

std::optional<std::vector<textio::StoredField>> Table::StoredForm(std::span<const std::size_t>, unsigned) {
    return std::nullopt;
}

std::size_t Table::LocateRecords(std::span<const std::uint32_t>, const char**) {
    return 0;
}

}  // namespace zu::technologies
