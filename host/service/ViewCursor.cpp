#include "host/service/ViewCursor.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "host/engine/TruthValue.h"
#include "host/service/FieldSelection.h"
#include "host/service/ValueConversion.h"
#include "host/service/VariableRecords.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

bool SameName(std::wstring_view left, std::wstring_view right) noexcept {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

ViewField PseudoField(const char* name, technologies::FieldType type, int size, bool readOnly) {
    technologies::FieldDescription description;
    description.name = name;
    description.type = type;
    description.size = size;
    description.displayWidth = size;
    description.rightAligned = type == technologies::FieldType::Integer32;
    description.readOnly = readOnly;
    return ViewField(std::move(description));
}

std::string Utf8(std::wstring_view text) {
    return text::ToUtf8(com::AsUtf16(text));
}

/// One record, unless the caller says how many. A negative count other than -1 has no meaning.
LONG Steps(LONG count) {
    if (count < -1)
        throw Error(ErrorKind::InvalidArgument, "Cannot move by " + std::to_string(count) + " records");
    return count == -1 ? 1 : count;
}

}  // namespace

std::size_t ViewCursor::Find(std::wstring_view name) const noexcept {
    const std::size_t found = FindField(fields(), name);
    if (found != kNoField) return found;
    if (SameName(name, kRecordNumberName)) return kRecordNumberField;
    if (SameName(name, kDeletedName)) return kDeletedField;
    return kNoField;
}

std::size_t ViewCursor::Locate(const VARIANT& index) const {
    const std::string table = "Table " + Utf8(records_->tableName());
    if (const auto name = com::TextOf(index)) {
        const std::size_t found = Find(*name);
        if (found == kNoField)
            throw Error(ErrorKind::NotFound, table + " has no field \"" + Utf8(*name) + "\"");
        return found;
    }
    const std::optional<LONG> number = WholeNumber(index);
    if (!number) throw com::ComError(com::kTypeMismatch, L"A field is asked for by its name or its number");
    if (*number < 0 || static_cast<std::size_t>(*number) >= fields().size())
        throw Error(ErrorKind::NotFound, table + " has no field " + std::to_string(*number) + ", there are " +
                                             std::to_string(fields().size()) + " counted from 0");
    return static_cast<std::size_t>(*number);
}

const ViewField& ViewCursor::Field(std::size_t field) const {
    static const ViewField recordNumber =
        PseudoField("##RECNO", technologies::FieldType::Integer32, 10, true);
    static const ViewField deleted = PseudoField("##DELETED", technologies::FieldType::Boolean, 5, false);
    if (field == kRecordNumberField) return recordNumber;
    if (field == kDeletedField) return deleted;
    return fields().at(field);
}

LONG ViewCursor::Count() const {
    return static_cast<LONG>(
        std::min<std::size_t>(records_->Count(), static_cast<std::size_t>(std::numeric_limits<LONG>::max())));
}

void ViewCursor::MoveLast() {
    position_ = std::max<LONG>(Count() - 1, 0);
}

void ViewCursor::MoveNext(LONG count) {
    const LONG steps = Steps(count);
    const LONG end = Count();
    position_ = steps > end - position_ ? std::max(end, position_) : position_ + steps;
}

void ViewCursor::MovePrevious(LONG count) {
    const LONG steps = Steps(count);
    if (Count() == 0) return;
    position_ = steps > position_ ? -1 : position_ - steps;
}

void ViewCursor::Move(LONG record) {
    position_ = static_cast<LONG>(Checked(record));
}

std::size_t ViewCursor::Checked(LONG record) const {
    const LONG count = Count();
    if (record < 0 || record >= count)
        throw Error(ErrorKind::InvalidArgument, "Table " + Utf8(records_->tableName()) +
                                                    ": there is no record " + std::to_string(record) +
                                                    " in this view of " + std::to_string(count) +
                                                    ", counted from 0");
    return static_cast<std::size_t>(record);
}

std::size_t ViewCursor::Current() const {
    if (position_ < 0 || position_ >= Count())
        throw Error(ErrorKind::NotFound, "Table " + Utf8(records_->tableName()) +
                                             ": there is no current record, the view stands " +
                                             (position_ < 0 ? "before the first one" : "past the last one"));
    return static_cast<std::size_t>(position_);
}

com::Variant ViewCursor::Read(std::size_t field) {
    return ReadAt(Current(), field);
}

com::Variant ViewCursor::Read(LONG record, std::size_t field) {
    return ReadAt(Checked(record), field);
}

com::Variant ViewCursor::ReadAt(std::size_t record, std::size_t field) {
    if (field == kRecordNumberField) return com::Variant(static_cast<LONG>(records_->RecordNumber(record)));
    if (field == kDeletedField) return com::Variant(records_->IsDeleted(record));
    const ViewField& description = fields().at(field);
    records_->Read(record, field, value_);
    return ToVariant(value_, description.description.type);
}

void ViewCursor::Write(std::size_t field, const VARIANT& value) {
    const std::size_t record = Current();
    if (field == kDeletedField) return records_->SetDeleted(record, ToTruthValue(value));
    const ViewField& target = Field(field);
    if (field == kRecordNumberField)
        throw Error(ErrorKind::InvalidArgument, "Field ##RECNO cannot be changed");
    technologies::Value converted;
    try {
        converted = FromVariant(value, target.description.type);
    } catch (const com::ComError& error) {
        throw com::ComError(error.code(), L"Field " + target.name + L": " + error.description());
    }
    FitToField(converted, target.description);
    records_->Write(record, field, converted);
}

void ViewCursor::Close() {
    records_ = std::make_shared<VariableRecords>(records_->tableName(), fields(), 0);
    position_ = 0;
}

}  // namespace zu::host
