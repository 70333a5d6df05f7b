#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// DataKeyFields with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledDataKeyFields : public DataKeyFields {
public:
    using Interface = DataKeyFields;

    STDMETHODIMP Item(VARIANT, DataKeyField**) override { return Unexpected("DataKeyFields.Item"); }
    STDMETHODIMP Count(LONG*) override { return Unexpected("DataKeyFields.Count"); }
    STDMETHODIMP get__NewEnum(IUnknown**) override { return Unexpected("DataKeyFields.get__NewEnum"); }
};

}  // namespace zu::fake
