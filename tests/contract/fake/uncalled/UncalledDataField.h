#pragma once

#include "idl/ZuDataViewInterface.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuDataField with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledDataField : public ZuDataField {
public:
    using Interface = ZuDataField;

    STDMETHODIMP get_Name(BSTR*) override { return Unexpected("ZuDataField.get_Name"); }
    STDMETHODIMP get_Value(VARIANT*) override { return Unexpected("ZuDataField.get_Value"); }
    STDMETHODIMP put_Value(VARIANT) override { return Unexpected("ZuDataField.put_Value"); }
    STDMETHODIMP get_Index(LONG*) override { return Unexpected("ZuDataField.get_Index"); }
    STDMETHODIMP get_Type(LONG*) override { return Unexpected("ZuDataField.get_Type"); }
    STDMETHODIMP get_TypeName(BSTR*) override { return Unexpected("ZuDataField.get_TypeName"); }
    STDMETHODIMP get_DisplayWidth(LONG*) override { return Unexpected("ZuDataField.get_DisplayWidth"); }
    STDMETHODIMP get_ReadOnly(VARIANT_BOOL*) override { return Unexpected("ZuDataField.get_ReadOnly"); }
    STDMETHODIMP get_Decimals(LONG*) override { return Unexpected("ZuDataField.get_Decimals"); }
    STDMETHODIMP get_Nullable(VARIANT_BOOL*) override { return Unexpected("ZuDataField.get_Nullable"); }
    STDMETHODIMP get_IsNull(VARIANT_BOOL*) override { return Unexpected("ZuDataField.get_IsNull"); }
    STDMETHODIMP get_OriginalValue(VARIANT*) override { return Unexpected("ZuDataField.get_OriginalValue"); }
    STDMETHODIMP get_Text(BSTR*) override { return Unexpected("ZuDataField.get_Text"); }
    STDMETHODIMP get_Size(LONG*) override { return Unexpected("ZuDataField.get_Size"); }
    STDMETHODIMP get_Alignment(LONG*) override { return Unexpected("ZuDataField.get_Alignment"); }
};

}  // namespace zu::fake
