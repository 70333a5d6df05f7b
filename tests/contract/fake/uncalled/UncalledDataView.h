#pragma once

#include "idl/ZuDataViewInterface.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuDataView with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledDataView : public ZuDataView {
public:
    using Interface = ZuDataView;

    STDMETHODIMP get_Item(VARIANT, ZuDataField**) override { return Unexpected("ZuDataView.get_Item"); }
    STDMETHODIMP Update(VARIANT_BOOL*) override { return Unexpected("ZuDataView.Update"); }
    STDMETHODIMP get_Fields(ZuDataFields**) override { return Unexpected("ZuDataView.get_Fields"); }
    STDMETHODIMP get_Updateable(VARIANT_BOOL*) override { return Unexpected("ZuDataView.get_Updateable"); }
    STDMETHODIMP get_TableName(BSTR*) override { return Unexpected("ZuDataView.get_TableName"); }
    STDMETHODIMP get_RecordCount(LONG, LONG*) override { return Unexpected("ZuDataView.get_RecordCount"); }
    STDMETHODIMP MoveFirst(LONG) override { return Unexpected("ZuDataView.MoveFirst"); }
    STDMETHODIMP MoveLast(LONG) override { return Unexpected("ZuDataView.MoveLast"); }
    STDMETHODIMP MoveNext(LONG) override { return Unexpected("ZuDataView.MoveNext"); }
    STDMETHODIMP MovePrevious(LONG) override { return Unexpected("ZuDataView.MovePrevious"); }
    STDMETHODIMP get_Bof(LONG, VARIANT_BOOL*) override { return Unexpected("ZuDataView.get_Bof"); }
    STDMETHODIMP get_Eof(LONG, VARIANT_BOOL*) override { return Unexpected("ZuDataView.get_Eof"); }
    STDMETHODIMP get_AbsolutePosition(LONG, LONG*) override {
        return Unexpected("ZuDataView.get_AbsolutePosition");
    }
    STDMETHODIMP get_RecordNumber(LONG*) override { return Unexpected("ZuDataView.get_RecordNumber"); }
    STDMETHODIMP get_IsDirty(VARIANT_BOOL*) override { return Unexpected("ZuDataView.get_IsDirty"); }
    STDMETHODIMP get_IsNew(VARIANT_BOOL*) override { return Unexpected("ZuDataView.get_IsNew"); }
    STDMETHODIMP get_IsDeleted(VARIANT_BOOL*) override { return Unexpected("ZuDataView.get_IsDeleted"); }
    STDMETHODIMP CancelUpdate() override { return Unexpected("ZuDataView.CancelUpdate"); }
    STDMETHODIMP Undelete(LONG, VARIANT_BOOL*) override { return Unexpected("ZuDataView.Undelete"); }
    STDMETHODIMP Delete(LONG, VARIANT_BOOL*) override { return Unexpected("ZuDataView.Delete"); }
    STDMETHODIMP AddNew(VARIANT*, VARIANT_BOOL*) override { return Unexpected("ZuDataView.AddNew"); }
    STDMETHODIMP Refresh() override { return Unexpected("ZuDataView.Refresh"); }
    STDMETHODIMP get_CellValue(LONG, LONG, VARIANT*) override {
        return Unexpected("ZuDataView.get_CellValue");
    }
    STDMETHODIMP Clone(ZuDataView**) override { return Unexpected("ZuDataView.Clone"); }
    STDMETHODIMP Close() override { return Unexpected("ZuDataView.Close"); }
    STDMETHODIMP Move(LONG, LONG) override { return Unexpected("ZuDataView.Move"); }
};

}  // namespace zu::fake
