#include "tests/contract/fake/FakeIndex.h"

namespace zu::fake {

STDMETHODIMP FakeKeyField::put_Value(VARIANT value) {
    return Do("DataKeyField.Value", Lead() + "= " + Show(value), [] {});
}

STDMETHODIMP FakeKeyField::put_Exact(VARIANT_BOOL value) {
    return Do("DataKeyField.Exact", Lead() + "= " + Show(value), [] {});
}

STDMETHODIMP FakeKeyField::get_Name(BSTR* result) {
    return Answer("DataKeyField.Name", "", result,
                  [&] { return com::NewBstr(L"K" + std::to_wstring(number_)); });
}

STDMETHODIMP FakeKeyField::get_Descending(VARIANT_BOOL* result) {
    return Answer("DataKeyField.Descending", "", result,
                  [&] { return com::ToVariantBool(number_ % 2 == 1); });
}

STDMETHODIMP FakeKeyFields::Item(VARIANT index, DataKeyField** result) {
    return Answer("DataKeyFields.Item", Show(index), result,
                  [&] { return Make<FakeKeyField>(index.vt == VT_I4 ? index.lVal : -1).detach(); });
}

STDMETHODIMP FakeKeyFields::Count(LONG* result) {
    return Answer("DataKeyFields.Count", "", result, [] { return Scene().keyFields; });
}

STDMETHODIMP FakeIndex::KeyFields(DataKeyFields** result) {
    return Answer("DataIndex.KeyFields", "", result, [] { return Make<FakeKeyFields>().detach(); });
}

}  // namespace zu::fake
