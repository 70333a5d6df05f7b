#include "component/table/DataView.h"

#include <utility>

#include "com/ComError.h"

namespace zu::component {

using com::Check;
using com::ComPtr;
using com::Required;
using com::Variant;

namespace {

/// What the contract wants for arguments named Reserved.
constexpr LONG kReserved = 0;
/// The argument that the view's MoveNext expects for one step ahead.
constexpr LONG kNextRecord = -1;

}  // namespace

DataView::DataView(ComPtr<ZuDataView> view) : view_(std::move(view)) {
    Required(view_.get());
}

LONG DataView::RecordCount() const {
    LONG count = 0;
    Check(view_->get_RecordCount(kReserved, &count));
    return count;
}

LONG DataView::AbsolutePosition() const {
    LONG position = 0;
    Check(view_->get_AbsolutePosition(kReserved, &position));
    return position;
}

void DataView::MoveFirst() const {
    Check(view_->MoveFirst(kReserved));
}

void DataView::MoveNext() const {
    Check(view_->MoveNext(kNextRecord));
}

void DataView::Move(LONG position) const {
    Check(view_->Move(position, kReserved));
}

bool DataView::Eof() const {
    VARIANT_BOOL eof = VARIANT_FALSE;
    Check(view_->get_Eof(kReserved, &eof));
    return eof != VARIANT_FALSE;
}

Variant DataView::Value(std::wstring_view field) {
    Variant value;
    Check(Field(Variant(field))->get_Value(value.put()));
    return value;
}

bool DataView::Updateable() const {
    VARIANT_BOOL updateable = VARIANT_FALSE;
    Check(view_->get_Updateable(&updateable));
    return updateable != VARIANT_FALSE;
}

LONG DataView::FieldCount() {
    LONG count = 0;
    Check(Fields().get_Count(&count));
    return count;
}

ComPtr<ZuDataField> DataView::Field(const VARIANT& nameOrNumber) {
    ComPtr<ZuDataField> found;
    Check(Fields().get_Item(nameOrNumber, found.put()));
    Required(found.get());
    return found;
}

void DataView::SetValue(const VARIANT& field, const VARIANT& value) {
    Check(Field(field)->put_Value(value));
}

bool DataView::AddNew(VARIANT& values) const {
    VARIANT_BOOL added = VARIANT_FALSE;
    Check(view_->AddNew(&values, &added));
    return added != VARIANT_FALSE;
}

bool DataView::Update() const {
    VARIANT_BOOL saved = VARIANT_FALSE;
    Check(view_->Update(&saved));
    return saved != VARIANT_FALSE;
}

bool DataView::Delete(LONG position) const {
    VARIANT_BOOL deleted = VARIANT_FALSE;
    Check(view_->Delete(position, &deleted));
    return deleted != VARIANT_FALSE;
}

ZuDataFields& DataView::Fields() {
    if (!fields_) Check(view_->get_Fields(fields_.put()));
    return *Required(fields_.get());
}

ComPtr<ZuDataView> IsDataView(const VARIANT& object) noexcept {
    return com::ObjectOf<ZuDataView>(object);
}

}  // namespace zu::component
