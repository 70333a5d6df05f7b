#include "host/service/ViewCursor.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "com/Bstr.h"
#include "com/ComError.h"
#include "com/SameText.h"
#include "host/engine/TruthValue.h"
#include "host/service/FieldSelection.h"
#include "host/service/RefusedValue.h"
#include "host/service/ValueConversion.h"
#include "host/service/VariableRecords.h"
#include "host/service/ViewAccess.h"
#include "idl/FailureReasons.h"
#include "portable/error/Error.h"
#include "portable/text/Utf.h"

namespace zu::host {
namespace {

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

/// Numbers that the table draws itself. (Arrays of bytes are read-only for scripts, not for copies.)
bool IsKeptByTable(const technologies::FieldDescription& field) noexcept {
    return field.readOnly && field.type != technologies::FieldType::Binary;
}

/// Reasons for which a record stays unsaved although everything works.
bool ConcernsTheRecord(ErrorKind kind) noexcept {
    return kind == ErrorKind::AlreadyExists || kind == ErrorKind::Locked || kind == ErrorKind::Conflict;
}

}  // namespace

ViewCursor::ViewCursor(std::shared_ptr<RecordSet> records)
    : records_(std::move(records)), takesEdits_(records_->isUpdateable() && !records_->keepsAtOnce()) {
    records_->Watch(*this);
}

ViewCursor::~ViewCursor() {
    records_->Unwatch(*this);
}

std::shared_ptr<ViewCursor> ViewCursor::Clone() const {
    auto clone = std::make_shared<ViewCursor>(records_);
    clone->position_ = position_;
    return clone;
}

void ViewCursor::OnJoined() noexcept {
    // Where a new record is begun here, it keeps its place behind all others.
    if (new_ && static_cast<std::size_t>(position_) + 1 == records_->Count()) ++position_;
}

void ViewCursor::OnLeft(std::size_t record) noexcept {
    if (position_ > 0 && static_cast<std::size_t>(position_) > record) --position_;
    if (before_ > 0 && static_cast<std::size_t>(before_) > record) --before_;
    if (!edit_ || new_) return;
    if (edited_ == record)
        DropEdit();
    else if (edited_ > record)
        --edited_;
}

std::size_t ViewCursor::Find(std::wstring_view name) const noexcept {
    const std::size_t found = FindField(fields(), name);
    if (found != kNoField) return found;
    if (com::SameText(name, kRecordNumberName)) return kRecordNumberField;
    if (com::SameText(name, kDeletedName)) return kDeletedField;
    return kNoField;
}

std::size_t ViewCursor::Locate(const VARIANT& index) const {
    if (const auto name = com::TextOf(index)) {
        const std::size_t found = Find(*name);
        if (found == kNoField)
            throw Error(ErrorKind::NotFound,
                        "Table " + Utf8(records_->tableName()) + " has no field \"" + Utf8(*name) + "\"");
        return found;
    }
    const std::optional<LONG> number = WholeNumber(index);
    if (!number) throw com::ComError(com::kTypeMismatch, L"A field is asked for by its name or its number");
    if (*number < 0 || static_cast<std::size_t>(*number) >= fields().size())
        throw Error(ErrorKind::NotFound, "Table " + Utf8(records_->tableName()) + " has no field " +
                                             std::to_string(*number) + ", there are " +
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

void ViewCursor::GoTo(LONG record) {
    if (record == position_ && !new_) CancelUpdate();
    position_ = record;
    seen_.Forget();
}

void ViewCursor::MoveLast() {
    GoTo(std::max<LONG>(Count() - 1, 0));
}

void ViewCursor::MoveNext(LONG count) {
    const LONG steps = Steps(count);
    const LONG end = Count();
    position_ = steps > end - position_ ? std::max(end, position_) : position_ + steps;
    seen_.Forget();
}

void ViewCursor::MovePrevious(LONG count) {
    const LONG steps = Steps(count);
    if (Count() == 0) return;
    position_ = steps > position_ ? -1 : position_ - steps;
    seen_.Forget();
}

void ViewCursor::Move(LONG record) {
    if (new_ && record == Count()) {
        position_ = record;
    } else {
        GoTo(static_cast<LONG>(Checked(record)));
    }
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
    const LONG count = Count();
    if (position_ < 0 || position_ >= count)
        throw com::ComError(kNoCurrentRecord, L"Table " + records_->tableName() +
                                                  L": there is no current record, the view " +
                                                  (count == 0      ? L"holds none"
                                                   : position_ < 0 ? L"stands before the first one"
                                                                   : L"stands past the last one"));
    return static_cast<std::size_t>(position_);
}

technologies::RecordEdit* ViewCursor::CurrentEdit() const {
    if (!edit_) return nullptr;
    const bool current = new_ ? isNew() : position_ >= 0 && static_cast<std::size_t>(position_) == edited_;
    return current ? edit_.get() : nullptr;
}

void ViewCursor::DropEdit() noexcept {
    edit_.reset();
    new_ = false;
    outdated_ = false;
    seen_.Forget();
}

com::Variant ViewCursor::Read(std::size_t field) {
    if (isNew()) return ReadEdit(field);
    const std::size_t record = Current();
    com::Variant value = ReadAt(record, field);
    if (takesEdits_ && field < fields().size() && !(edit_ && !new_ && edited_ == record))
        seen_.Note(field, value_);
    return value;
}

com::Variant ViewCursor::Read(LONG record, std::size_t field) {
    return ReadAt(Checked(record), field);
}

com::Variant ViewCursor::ReadStored(std::size_t field) {
    if (isNew()) return com::Variant::Null();
    const std::size_t record = Current();
    if (field >= fields().size()) return ReadAt(record, field);
    records_->Read(record, field, value_);
    return ToVariant(value_, fields()[field].description.type);
}

com::Variant ViewCursor::ReadEdit(std::size_t field) {
    if (field == kRecordNumberField) return com::Variant(LONG{0});
    if (field == kDeletedField) return com::Variant(edit_->isDeleted());
    const ViewField& description = fields().at(field);
    edit_->Get(records_->PlaceInEdit(field), value_);
    return ToVariant(value_, description.description.type);
}

com::Variant ViewCursor::ReadAt(std::size_t record, std::size_t field) {
    if (field == kRecordNumberField) return com::Variant(static_cast<LONG>(records_->RecordNumber(record)));
    if (field == kDeletedField) return com::Variant(records_->IsDeleted(record));
    if (edit_ && !new_ && edited_ == record) return ReadEdit(field);
    const ViewField& description = fields().at(field);
    records_->Read(record, field, value_);
    return ToVariant(value_, description.description.type);
}

/// Leaves the value as the field takes it in value_.
void ViewCursor::Convert(std::size_t field, const VARIANT& value) {
    const ViewField& target = fields()[field];
    try {
        FromVariant(value, target.description.type, value_);
    } catch (const com::ComError& error) {
        throw RefusedValue(error, L"Field " + target.name + L" of table " + records_->tableName(),
                           target.description.type, value);
    }
    TrimToField(value_, target.description);
}

void ViewCursor::Write(std::size_t field, const VARIANT& value) {
    if (field == kRecordNumberField)
        throw Error(ErrorKind::InvalidArgument,
                    "Table " + Utf8(records_->tableName()) +
                        ": the number of a record, field ##RECNO, cannot be changed");
    if (field == kDeletedField) {
        const bool deleted = ToTruthValue(value);
        if (isNew()) return edit_->SetDeleted(deleted);
        records_->SetDeleted(Current(), deleted);
        return;
    }
    technologies::RecordEdit* edit = CurrentEdit();
    const std::size_t record = edit ? edited_ : Current();
    Convert(field, value);
    if (edit) {
        const bool outdated = !new_ && IsOutdated(*edit, field);
        edit->Set(records_->PlaceInEdit(field), value_);
        seen_.Forget(field);
        outdated_ = outdated_ || outdated;
        return;
    }
    if (records_->keepsAtOnce() || !records_->isUpdateable()) {
        FitToField(value_, fields()[field].description, Utf8(records_->tableName()));
        return records_->Write(record, field, value_);
    }
    auto begun = records_->BeginEdit(record);
    const bool outdated = IsOutdated(*begun, field);
    begun->Set(records_->PlaceInEdit(field), value_);
    edit_ = std::move(begun);
    edited_ = record;
    new_ = false;
    outdated_ = outdated;
    seen_.Forget(field);
}

bool ViewCursor::IsOutdated(technologies::RecordEdit& edit, std::size_t field) {
    if (!seen_.WasNoted(field)) return false;
    technologies::Value stored;
    edit.Get(records_->PlaceInEdit(field), stored);
    return seen_.Differs(field, stored);
}

bool ViewCursor::isDirty() const {
    const technologies::RecordEdit* const edit = CurrentEdit();
    return edit && edit->isChanged();
}

std::uint32_t ViewCursor::RecordNumber() {
    return isNew() ? 0 : records_->RecordNumber(Current());
}

bool ViewCursor::IsDeleted() {
    return isNew() ? edit_->isDeleted() : records_->IsDeleted(Current());
}

bool ViewCursor::Update(std::string& whyNot) {
    technologies::RecordEdit* const edit = CurrentEdit();
    if (!edit) {
        const std::size_t record = Current();
        if (!records_->isUpdateable())
            records_->RefuseChange("save record " + std::to_string(records_->RecordNumber(record)));
        return true;
    }
    try {
        if (outdated_ || !edit->Save()) {
            whyNot = "Record " + std::to_string(edit->record()) + " of table " + Utf8(records_->tableName()) +
                     " was not saved: somebody else has changed one of the same fields meanwhile";
            return false;
        }
    } catch (const Error& error) {
        if (!ConcernsTheRecord(error.kind())) throw;
        whyNot = error.what();
        return false;
    }
    if (new_) {
        SaveNew();
    } else {
        DropEdit();
    }
    return true;
}

void ViewCursor::SaveNew() {
    const std::unique_ptr<technologies::RecordEdit> saved = std::move(edit_);
    DropEdit();
    records_->Join(saved->record(), saved->isDeleted());
}

void ViewCursor::CancelUpdate() {
    if (!CurrentEdit()) return;
    if (new_) position_ = before_;
    DropEdit();
}

void ViewCursor::Refresh() {
    CancelUpdate();
    seen_.Forget();
}

bool ViewCursor::AddNew(ZuDataView* values) {
    std::unique_ptr<technologies::RecordEdit> begun = records_->BeginNew();
    if (!begun) return false;
    if (values) CopyValues(*begun, *values);
    if (!new_) before_ = position_;
    edit_ = std::move(begun);
    new_ = true;
    outdated_ = false;
    position_ = Count();
    seen_.Forget();
    return true;
}

void ViewCursor::CopyValues(technologies::RecordEdit& edit, ZuDataView& values) {
    const com::ComPtr<ZuDataFields> sources = FieldsOf(values);
    const LONG count = CountOf(*sources);
    for (LONG i = 0; i < count; ++i) {
        const com::ComPtr<ZuDataField> source = FieldOf(*sources, i);
        const std::size_t target = FindField(fields(), NameOf(*source).view());
        if (target == kNoField || IsKeptByTable(fields()[target].description)) continue;
        com::Variant value;
        com::Check(source->get_Value(value.put()));
        Convert(target, value);
        // A blank record has nothing in its fields already.
        if (value_.kind == technologies::Value::Kind::Null && !fields()[target].description.nullable)
            continue;
        edit.Set(records_->PlaceInEdit(target), value_);
    }
}

bool ViewCursor::SetDeleted(LONG record, bool deleted) {
    return records_->SetDeleted(Checked(record), deleted);
}

void ViewCursor::Close() {
    DropEdit();
    auto none = std::make_shared<VariableRecords>(records_->tableName(), fields(), 0);
    records_->Unwatch(*this);
    records_ = std::move(none);
    records_->Watch(*this);
    position_ = 0;
}

}  // namespace zu::host
