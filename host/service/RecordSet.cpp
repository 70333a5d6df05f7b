#include "host/service/RecordSet.h"

#include <utility>

#include "com/Bstr.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {

bool RecordSet::ReadRow(std::size_t, technologies::RowCells&) {
    return false;
}

std::optional<std::vector<textio::StoredField>> RecordSet::StoredForm(unsigned) {
    return std::nullopt;
}

std::size_t RecordSet::LocateRecords(std::size_t, std::span<const char*>) {
    return 0;
}

std::uint32_t RecordSet::AddRow(technologies::Batch&, std::span<const textio::Cell>, const unsigned long*,
                                unsigned) {
    return 0;
}

bool RecordSet::MatchStored(technologies::Batch&, std::span<const textio::StoredField>,
                            const unsigned long*) {
    return false;
}

std::unique_ptr<technologies::Batch> RecordSet::BeginBatch() {
    return std::make_unique<technologies::Batch>();
}

void RecordSet::RefuseChange(const std::string& what) const {
    const std::string why = WhyReadOnly();
    throw Error(ErrorKind::Unsupported, "Table " + text::ToUtf8(com::AsUtf16(tableName())) +
                                            " can only be read: cannot " + what +
                                            (why.empty() ? "" : ", because " + why));
}

void RecordSet::Write(std::size_t record, std::size_t field, const technologies::Value&) {
    RefuseChange("change field " + fields().at(field).description.name + " of record " +
                 std::to_string(RecordNumber(record)));
}

std::unique_ptr<technologies::RecordEdit> RecordSet::BeginEdit(std::size_t record) {
    RefuseChange("change record " + std::to_string(RecordNumber(record)));
}

std::unique_ptr<technologies::RecordEdit> RecordSet::BeginNew() {
    RefuseChange("add a record");
}

void RecordSet::Join(std::uint32_t, bool) {
    RefuseChange("add a record");
}

bool RecordSet::SetDeleted(std::size_t record, bool deleted) {
    RefuseChange((deleted ? "delete record " : "undelete record ") + std::to_string(RecordNumber(record)));
}

RecordSet::Deletion RecordSet::DeleteAll() {
    Deletion deletion;
    for (std::size_t record = Count(); record-- > 0;)
        if (SetDeleted(record, true)) ++deletion.changed;
    return deletion;
}

void RecordSet::Watch(Observer& observer) noexcept {
    observer.next_ = observers_;
    observers_ = &observer;
}

void RecordSet::Unwatch(Observer& observer) noexcept {
    Observer** place = &observers_;
    while (*place && *place != &observer)
        place = &(*place)->next_;
    if (*place) *place = std::exchange(observer.next_, nullptr);
}

void RecordSet::TellJoined() noexcept {
    for (Observer* observer = observers_; observer; observer = observer->next_)
        observer->OnJoined();
}

void RecordSet::TellLeft(std::size_t record) noexcept {
    for (Observer* observer = observers_; observer; observer = observer->next_)
        observer->OnLeft(record);
}

}  // namespace zu::host
