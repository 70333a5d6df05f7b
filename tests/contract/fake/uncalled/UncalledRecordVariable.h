#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuRecordVariable with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledRecordVariable : public ZuRecordVariable {
public:
    using Interface = ZuRecordVariable;

    STDMETHODIMP get_Initialised(VARIANT_BOOL*) override {
        return Unexpected("ZuRecordVariable.get_Initialised");
    }
    STDMETHODIMP get_Layout(IDispatch**) override { return Unexpected("ZuRecordVariable.get_Layout"); }
    STDMETHODIMP get_Records(LONG*) override { return Unexpected("ZuRecordVariable.get_Records"); }
    STDMETHODIMP get_FieldValue(VARIANT, VARIANT*) override {
        return Unexpected("ZuRecordVariable.get_FieldValue");
    }
    STDMETHODIMP put_FieldValue(VARIANT, VARIANT) override {
        return Unexpected("ZuRecordVariable.put_FieldValue");
    }
    STDMETHODIMP Assign(IDispatch*, VARIANT_BOOL*) override { return Unexpected("ZuRecordVariable.Assign"); }
    STDMETHODIMP Initialise(IDispatch*, LONG, VARIANT_BOOL*) override {
        return Unexpected("ZuRecordVariable.Initialise");
    }
    STDMETHODIMP Reset() override { return Unexpected("ZuRecordVariable.Reset"); }
};

}  // namespace zu::fake
