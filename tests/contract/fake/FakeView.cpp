#include "tests/contract/fake/FakeView.h"

namespace zu::fake {

STDMETHODIMP FakeField::get_Name(BSTR* result) {
    return Answer("ZuDataField.Name", "", result, [&] { return com::NewBstr(content_.name); });
}

STDMETHODIMP FakeField::get_Value(VARIANT* result) {
    return Answer("ZuDataField.Value", "", result, [&] { return com::Variant(content_.value).detach(); });
}

STDMETHODIMP FakeField::get_Type(LONG* result) {
    return Answer("ZuDataField.Type", "", result, [&] { return content_.type; });
}

STDMETHODIMP FakeFields::get_Item(VARIANT index, ZuDataField** result) {
    const auto& fields = Scene().fields;
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const FieldContent& field) {
        return index.vt == VT_BSTR && com::View(index.bstrVal) == field.name;
    });
    bool missing = false;
    const HRESULT answer = Answer("ZuDataFields.Item", Show(index), result, [&]() -> ZuDataField* {
        missing = found == fields.end();
        return missing ? nullptr : Make<FakeField>(*found).detach();
    });
    return missing ? DISP_E_BADINDEX : answer;
}

STDMETHODIMP FakeFields::get_Count(LONG* result) {
    return Answer("ZuDataFields.Count", "", result, [] { return static_cast<LONG>(Scene().fields.size()); });
}

STDMETHODIMP FakeView::get_Fields(ZuDataFields** result) {
    return Answer("ZuDataView.Fields", "", result, [] { return Make<FakeFields>().detach(); });
}

STDMETHODIMP FakeView::get_RecordCount(LONG reserved, LONG* result) {
    return Answer("ZuDataView.RecordCount", Show(reserved), result, [&] { return records_; });
}

STDMETHODIMP FakeView::MoveFirst(LONG reserved) {
    return Do("ZuDataView.MoveFirst", Show(reserved), [&] { position_ = 0; });
}

STDMETHODIMP FakeView::MoveNext(LONG count) {
    return Do("ZuDataView.MoveNext", Show(count), [&] { ++position_; });
}

STDMETHODIMP FakeView::get_Eof(LONG reserved, VARIANT_BOOL* result) {
    return Answer("ZuDataView.Eof", Show(reserved), result,
                  [&] { return com::ToVariantBool(position_ >= records_); });
}

STDMETHODIMP FakeView::get_AbsolutePosition(LONG reserved, LONG* result) {
    return Answer("ZuDataView.AbsolutePosition", Show(reserved), result, [&] { return position_; });
}

}  // namespace zu::fake
