#pragma once

#include "idl/ZuDataViewInterface.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuDataFields with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledDataFields : public ZuDataFields {
public:
    using Interface = ZuDataFields;

    STDMETHODIMP get_Item(VARIANT, ZuDataField**) override { return Unexpected("ZuDataFields.get_Item"); }
    STDMETHODIMP get_Count(LONG*) override { return Unexpected("ZuDataFields.get_Count"); }
    STDMETHODIMP get__NewEnum(IUnknown**) override { return Unexpected("ZuDataFields.get__NewEnum"); }
    STDMETHODIMP Exists(BSTR, VARIANT_BOOL*) override { return Unexpected("ZuDataFields.Exists"); }
};

}  // namespace zu::fake
