#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// DataIndex with every operation a surprise: what the component is not meant to call ends up in the journal.
class UncalledDataIndex : public DataIndex {
public:
    using Interface = DataIndex;

    STDMETHODIMP get_Name(BSTR*) override { return Unexpected("DataIndex.get_Name"); }
    STDMETHODIMP get_Expression(BSTR*) override { return Unexpected("DataIndex.get_Expression"); }
    STDMETHODIMP get_Filter(BSTR*) override { return Unexpected("DataIndex.get_Filter"); }
    STDMETHODIMP get_Unique(VARIANT_BOOL*) override { return Unexpected("DataIndex.get_Unique"); }
    STDMETHODIMP get_Descending(VARIANT_BOOL*) override { return Unexpected("DataIndex.get_Descending"); }
    STDMETHODIMP KeyFields(DataKeyFields**) override { return Unexpected("DataIndex.KeyFields"); }
    STDMETHODIMP get_Usable(VARIANT_BOOL*) override { return Unexpected("DataIndex.get_Usable"); }
    STDMETHODIMP get_Reason(BSTR*) override { return Unexpected("DataIndex.get_Reason"); }
    STDMETHODIMP get_Candidate(VARIANT_BOOL*) override { return Unexpected("DataIndex.get_Candidate"); }
};

}  // namespace zu::fake
