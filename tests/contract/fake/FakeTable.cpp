#include "tests/contract/fake/FakeTable.h"

#include "tests/contract/fake/FakeIndex.h"
#include "tests/contract/fake/FakeView.h"

namespace zu::fake {

IDispatch* FakeTable::Selection(LONG maxRecords, bool any) const {
    if (!Scene().selects) return nullptr;
    const LONG records = any ? Scene().records : 0;
    return Make<FakeView>(maxRecords > 0 ? std::min(maxRecords, records) : records, name_).detach();
}

STDMETHODIMP FakeTable::Layout(IDispatch** result) {
    return Answer("DataTable.Layout", "", result, [&]() -> IDispatch* {
        return Scene().hasLayout ? Make<FakeView>(0, name_).detach() : nullptr;
    });
}

STDMETHODIMP FakeTable::OpenIndex(BSTR* name, VARIANT_BOOL* result) {
    return Answer("DataTable.OpenIndex", Show(name), result, [&] {
        indexOpen_ = Scene().opensIndex;
        return com::ToVariantBool(indexOpen_);
    });
}

STDMETHODIMP FakeTable::CurrentIndex(LONG reserved, DataIndex** result) {
    return Answer("DataTable.CurrentIndex", Show(reserved), result,
                  [&]() -> DataIndex* { return indexOpen_ ? Make<FakeIndex>().detach() : nullptr; });
}

STDMETHODIMP FakeTable::Seek(DataIndex* index, LONG reserved, LONG maxRecords, LONG flag, VARIANT fieldNames,
                             IDispatch** result) {
    return Answer("DataTable.Seek", ShowAll(index, reserved, maxRecords, flag, fieldNames), result,
                  [&] { return Selection(maxRecords); });
}

STDMETHODIMP FakeTable::Select(VARIANT condition, VARIANT maxRecords, LONG flag, VARIANT fieldNames,
                               IDispatch** result) {
    return Answer("DataTable.Select", ShowAll(condition, maxRecords, flag, fieldNames), result, [&] {
        // Null selects no record.
        return Selection(maxRecords.vt == VT_I4 ? maxRecords.lVal : 0, condition.vt != VT_NULL);
    });
}

}  // namespace zu::fake
