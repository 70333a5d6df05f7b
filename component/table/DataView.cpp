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

DataView DataView::FromValue(const VARIANT& value) {
    return DataView(com::ObjectOf<IUnknown>(value).as<ZuDataView>());
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

bool DataView::Eof() const {
    VARIANT_BOOL eof = VARIANT_FALSE;
    Check(view_->get_Eof(kReserved, &eof));
    return eof != VARIANT_FALSE;
}

Variant DataView::Value(std::wstring_view field) {
    ComPtr<ZuDataField> found;
    Check(Fields().get_Item(Variant(field), found.put()));
    Variant value;
    Check(Required(found.get())->get_Value(value.put()));
    return value;
}

ZuDataFields& DataView::Fields() {
    if (!fields_) Check(view_->get_Fields(fields_.put()));
    return *Required(fields_.get());
}

ComPtr<ZuDataView> IsDataView(const VARIANT& object) noexcept {
    return com::ObjectOf<ZuDataView>(object);
}

}  // namespace zu::component
