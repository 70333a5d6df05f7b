#include "host/service/DeletionMark.h"

#include <string>

#include "portable/error/Error.h"

namespace zu::host {

bool MarkRecord(technologies::Table& table, std::uint32_t number, bool deleted) {
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

}  // namespace zu::host
