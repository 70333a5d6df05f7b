#include "host/service/DeletionMark.h"

namespace zu::host {

bool MarkRecord(technologies::Table& table, std::uint32_t number, bool deleted) {
    technologies::MarkOutcome outcome;
    table.MarkRecords({&number, 1}, deleted, outcome);
    return outcome.changed != 0;
}

}  // namespace zu::host
