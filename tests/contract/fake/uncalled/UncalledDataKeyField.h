#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// DataKeyField with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledDataKeyField : public DataKeyField {
public:
    using Interface = DataKeyField;

    STDMETHODIMP get_Name(BSTR*) override { return Unexpected("DataKeyField.get_Name"); }
    STDMETHODIMP put_Value(VARIANT) override { return Unexpected("DataKeyField.put_Value"); }
    STDMETHODIMP get_Value(VARIANT*) override { return Unexpected("DataKeyField.get_Value"); }
    STDMETHODIMP get_Type(LONG*) override { return Unexpected("DataKeyField.get_Type"); }
    STDMETHODIMP get_Descending(VARIANT_BOOL*) override { return Unexpected("DataKeyField.get_Descending"); }
    STDMETHODIMP get_Exact(VARIANT_BOOL*) override { return Unexpected("DataKeyField.get_Exact"); }
    STDMETHODIMP put_Exact(VARIANT_BOOL) override { return Unexpected("DataKeyField.put_Exact"); }
};

}  // namespace zu::fake
