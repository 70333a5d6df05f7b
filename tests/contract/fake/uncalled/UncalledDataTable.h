#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// DataTable with every operation a surprise: what the component is not meant to call ends up in the journal.
class UncalledDataTable : public DataTable {
public:
    using Interface = DataTable;

    STDMETHODIMP get_Name(BSTR*) override { return Unexpected("DataTable.get_Name"); }
    STDMETHODIMP Layout(IDispatch**) override { return Unexpected("DataTable.Layout"); }
    STDMETHODIMP OpenIndex(BSTR*, VARIANT_BOOL*) override { return Unexpected("DataTable.OpenIndex"); }
    STDMETHODIMP CurrentIndex(LONG, DataIndex**) override { return Unexpected("DataTable.CurrentIndex"); }
    STDMETHODIMP Seek(DataIndex*, LONG, LONG, LONG, VARIANT, IDispatch**) override {
        return Unexpected("DataTable.Seek");
    }
    STDMETHODIMP get_RecordCount(LONG*) override { return Unexpected("DataTable.get_RecordCount"); }
    STDMETHODIMP IndexNames(VARIANT*) override { return Unexpected("DataTable.IndexNames"); }
    STDMETHODIMP Select(VARIANT, VARIANT, LONG, VARIANT, IDispatch**) override {
        return Unexpected("DataTable.Select");
    }
    STDMETHODIMP Index(VARIANT, DataIndex**) override { return Unexpected("DataTable.Index"); }
    STDMETHODIMP get_Updateable(VARIANT_BOOL*) override { return Unexpected("DataTable.get_Updateable"); }
    STDMETHODIMP Warnings(VARIANT*) override { return Unexpected("DataTable.Warnings"); }
    STDMETHODIMP Facts(VARIANT*) override { return Unexpected("DataTable.Facts"); }
};

}  // namespace zu::fake
