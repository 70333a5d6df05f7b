#include "host/technologies/Table.h"

namespace zu::technologies {

bool Table::ReadRow(std::uint32_t record, std::span<const std::size_t> chosen, RowCells& out) {
    for (const std::size_t field : chosen) {
        ReadValue(record, field, out.scratch());
        if (!out.Add(out.scratch(), fields()[field].type)) return false;
    }
    return true;
}

}  // namespace zu::technologies
