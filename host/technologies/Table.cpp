#include "host/technologies/Table.h"

namespace zu::technologies {

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
