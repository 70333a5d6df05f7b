#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// DataFieldList with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledDataFieldList : public DataFieldList {
public:
    using Interface = DataFieldList;

    STDMETHODIMP Add(VARIANT, VARIANT_BOOL) override { return Unexpected("DataFieldList.Add"); }
    STDMETHODIMP Count(LONG*) override { return Unexpected("DataFieldList.Count"); }
    STDMETHODIMP Item(LONG, VARIANT*) override { return Unexpected("DataFieldList.Item"); }
    STDMETHODIMP Descending(LONG, VARIANT_BOOL*) override { return Unexpected("DataFieldList.Descending"); }
    STDMETHODIMP get__NewEnum(IUnknown**) override { return Unexpected("DataFieldList.get__NewEnum"); }
    STDMETHODIMP Clear() override { return Unexpected("DataFieldList.Clear"); }
};

}  // namespace zu::fake
