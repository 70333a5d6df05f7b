#include "host/service/RecordSet.h"

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {

void RecordSet::RefuseChange(const std::string& what) const {
    throw Error(ErrorKind::Unsupported,
                "Table " + text::ToUtf8(com::AsUtf16(tableName())) + " can only be read: cannot " + what);
}

void RecordSet::Write(std::size_t record, std::size_t field, const technologies::Value&) {
    RefuseChange("change field " + fields().at(field).description.name + " of record " +
                 std::to_string(RecordNumber(record)));
}

void RecordSet::SetDeleted(std::size_t record, bool deleted) {
    RefuseChange((deleted ? "delete record " : "undelete record ") + std::to_string(RecordNumber(record)));
}

bool RecordSet::Update(std::size_t record) {
    RefuseChange("save record " + std::to_string(RecordNumber(record)));
}

bool RecordSet::AddNew() {
    RefuseChange("add a record");
}

}  // namespace zu::host
