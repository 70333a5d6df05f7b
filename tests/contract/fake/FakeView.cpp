#include "tests/contract/fake/FakeView.h"

namespace zu::fake {

STDMETHODIMP FakeField::get_Name(BSTR* result) {
    return Answer("ZuDataField.Name", "", result, [&] { return com::NewBstr(content_.name); });
}

STDMETHODIMP FakeField::get_Value(VARIANT* result) {
    return Answer("ZuDataField.Value", "", result, [&] { return com::Variant(content_.value).detach(); });
}

STDMETHODIMP FakeField::put_Value(VARIANT value) {
    HRESULT answer = S_OK;
    const com::Bstr name(content_.name);
    const HRESULT entered = Do("ZuDataField.Value", ShowAll(name.get()) + " = " + Show(value), [&] {
        if (Scene().takesValue) answer = Scene().takesValue(content_.name, value);
    });
    return FAILED(answer) ? answer : entered;
}

STDMETHODIMP FakeField::get_Type(LONG* result) {
    return Answer("ZuDataField.Type", "", result, [&] { return content_.type; });
}

STDMETHODIMP FakeField::get_Decimals(LONG* result) {
    return Answer("ZuDataField.Decimals", "", result, [&] { return content_.decimals; });
}

STDMETHODIMP FakeField::get_Size(LONG* result) {
    return Answer("ZuDataField.Size", "", result, [&] { return content_.size; });
}

STDMETHODIMP FakeFields::get_Item(VARIANT index, ZuDataField** result) {
    const auto& fields = Scene().FieldsOf(table_);
    LONG number = -1;
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const FieldContent& field) {
        ++number;
        return index.vt == VT_I4 ? index.lVal == number
                                 : index.vt == VT_BSTR && com::View(index.bstrVal) == field.name;
    });
    bool missing = false;
    const HRESULT answer = Answer("ZuDataFields.Item", Show(index), result, [&]() -> ZuDataField* {
        missing = found == fields.end();
        return missing ? nullptr : Make<FakeField>(*found).detach();
    });
    return missing ? DISP_E_BADINDEX : answer;
}

STDMETHODIMP FakeFields::get_Count(LONG* result) {
    return Answer("ZuDataFields.Count", "", result,
                  [&] { return static_cast<LONG>(Scene().FieldsOf(table_).size()); });
}

STDMETHODIMP FakeView::get_Fields(ZuDataFields** result) {
    return Answer("ZuDataView.Fields", "", result, [&] { return Make<FakeFields>(table_).detach(); });
}

STDMETHODIMP FakeView::get_Updateable(VARIANT_BOOL* result) {
    return Answer("ZuDataView.Updateable", "", result, [] { return com::ToVariantBool(Scene().updateable); });
}

STDMETHODIMP FakeView::AddNew(VARIANT* values, VARIANT_BOOL* result) {
    return Answer("ZuDataView.AddNew", values ? Show(*values) : "no reference", result, [&] {
        if (Scene().replacedValues.type() != VT_EMPTY) {
            VariantClear(values);
            *values = com::Variant(Scene().replacedValues).detach();
        }
        ++added_;
        return com::ToVariantBool(!Scene().addsNew || Scene().addsNew(added_));
    });
}

STDMETHODIMP FakeView::Update(VARIANT_BOOL* result) {
    return Answer("ZuDataView.Update", "", result, [&] {
        ++updated_;
        return com::ToVariantBool(!Scene().updates || Scene().updates(updated_));
    });
}

STDMETHODIMP FakeView::Delete(LONG index, VARIANT_BOOL* result) {
    return Answer("ZuDataView.Delete", Show(index), result,
                  [&] { return com::ToVariantBool(!Scene().deletes || Scene().deletes(index)); });
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
