#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuEngineData with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledEngineData : public ZuEngineData {
public:
    using Interface = ZuEngineData;

    STDMETHODIMP ToBoolean(VARIANT, VARIANT_BOOL*) override { return Unexpected("ZuEngineData.ToBoolean"); }
    STDMETHODIMP ToText(VARIANT, BSTR*) override { return Unexpected("ZuEngineData.ToText"); }
    STDMETHODIMP ToLong(VARIANT, LONG*) override { return Unexpected("ZuEngineData.ToLong"); }
    STDMETHODIMP ToDouble(VARIANT, double*) override { return Unexpected("ZuEngineData.ToDouble"); }
    STDMETHODIMP ToDate(VARIANT, DATE*) override { return Unexpected("ZuEngineData.ToDate"); }
    STDMETHODIMP ToCurrency(VARIANT, CURRENCY*) override { return Unexpected("ZuEngineData.ToCurrency"); }
    STDMETHODIMP IsBlank(VARIANT, VARIANT_BOOL*) override { return Unexpected("ZuEngineData.IsBlank"); }
    STDMETHODIMP NewRecordVariable(IDispatch**) override {
        return Unexpected("ZuEngineData.NewRecordVariable");
    }
    STDMETHODIMP DecimalPlaces(LONG, LONG*) override { return Unexpected("ZuEngineData.DecimalPlaces"); }
    STDMETHODIMP get_DataFolder(BSTR*) override { return Unexpected("ZuEngineData.get_DataFolder"); }
    STDMETHODIMP put_DataFolder(BSTR) override { return Unexpected("ZuEngineData.put_DataFolder"); }
    STDMETHODIMP DefaultTechnology(BSTR*) override { return Unexpected("ZuEngineData.DefaultTechnology"); }
    STDMETHODIMP RecordAdded(IDispatch*) override { return Unexpected("ZuEngineData.RecordAdded"); }
    STDMETHODIMP DatabaseService(IDispatch**) override { return Unexpected("ZuEngineData.DatabaseService"); }
};

}  // namespace zu::fake
