#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuEngineUserInterface with every operation a surprise: what the component is not meant to call ends up in
/// the journal.
class UncalledEngineUserInterface : public ZuEngineUserInterface {
public:
    using Interface = ZuEngineUserInterface;

    STDMETHODIMP OwnerWindow(LONG*) override { return Unexpected("ZuEngineUserInterface.OwnerWindow"); }
    STDMETHODIMP SetOwnerWindow(LONG) override { return Unexpected("ZuEngineUserInterface.SetOwnerWindow"); }
    STDMETHODIMP get_Interactive(VARIANT_BOOL*) override {
        return Unexpected("ZuEngineUserInterface.get_Interactive");
    }
    STDMETHODIMP put_Interactive(VARIANT_BOOL) override {
        return Unexpected("ZuEngineUserInterface.put_Interactive");
    }
};

}  // namespace zu::fake
