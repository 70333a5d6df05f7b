#include "component/ui/GridView.h"

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
constexpr const wchar_t* kDeletedField = L"##DELETED";

}  // namespace

GridView::GridView(ComPtr<ZuDataView> view) : view_(std::move(view)) {
    Required(view_.get());
}

bool GridView::Updateable() const {
    VARIANT_BOOL result = VARIANT_FALSE;
    Check(view_->get_Updateable(&result));
    return result != VARIANT_FALSE;
}

LONG GridView::RecordCount() const {
    LONG count = 0;
    Check(view_->get_RecordCount(kReserved, &count));
    return count;
}

void GridView::Move(LONG record) const {
    Check(view_->Move(record, kReserved));
}

bool GridView::AddNew() const {
    Variant noValues = Variant::Missing();
    VARIANT_BOOL result = VARIANT_FALSE;
    Check(view_->AddNew(noValues.address(), &result));
    return result != VARIANT_FALSE;
}

bool GridView::Update() const {
    VARIANT_BOOL result = VARIANT_FALSE;
    Check(view_->Update(&result));
    return result != VARIANT_FALSE;
}

Variant GridView::CellValue(LONG record, LONG column) const {
    Variant value;
    Check(view_->get_CellValue(record, column, value.put()));
    return value;
}

LONG GridView::FieldCount() {
    LONG count = 0;
    Check(Fields().get_Count(&count));
    return count;
}

ZuDataField& GridView::Field(LONG column) {
    const auto index = static_cast<std::size_t>(column);
    if (index >= byNumber_.size()) byNumber_.resize(index + 1);
    if (!byNumber_[index]) Check(Fields().get_Item(Variant(column), byNumber_[index].put()));
    return *Required(byNumber_[index].get());
}

ZuDataField& GridView::DeletedField() {
    if (!deleted_) Check(Fields().get_Item(Variant(kDeletedField), deleted_.put()));
    return *Required(deleted_.get());
}

ZuDataFields& GridView::Fields() {
    if (!fields_) Check(view_->get_Fields(fields_.put()));
    return *Required(fields_.get());
}

Variant ValueOf(ZuDataField& field) {
    Variant value;
    Check(field.get_Value(value.put()));
    return value;
}

}  // namespace zu::component
