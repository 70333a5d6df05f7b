#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuEngineContext with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledEngineContext : public ZuEngineContext {
public:
    using Interface = ZuEngineContext;

    STDMETHODIMP get_RoutineHolder(IDispatch**) override {
        return Unexpected("ZuEngineContext.get_RoutineHolder");
    }
    STDMETHODIMP putref_RoutineHolder(IDispatch*) override {
        return Unexpected("ZuEngineContext.putref_RoutineHolder");
    }
    STDMETHODIMP HasRoutine(BSTR, VARIANT_BOOL*) override { return Unexpected("ZuEngineContext.HasRoutine"); }
    STDMETHODIMP ClearRoutines() override { return Unexpected("ZuEngineContext.ClearRoutines"); }
    STDMETHODIMP SetContextItem(LONG, VARIANT) override {
        return Unexpected("ZuEngineContext.SetContextItem");
    }
    STDMETHODIMP SaveContextItem(LONG, VARIANT*) override {
        return Unexpected("ZuEngineContext.SaveContextItem");
    }
    STDMETHODIMP get_CurrentView(IDispatch**) override {
        return Unexpected("ZuEngineContext.get_CurrentView");
    }
    STDMETHODIMP get_CurrentRecord(LONG*) override { return Unexpected("ZuEngineContext.get_CurrentRecord"); }
    STDMETHODIMP get_ContextItemCount(LONG*) override {
        return Unexpected("ZuEngineContext.get_ContextItemCount");
    }
    STDMETHODIMP ContextItemHandle(LONG, LONG*) override {
        return Unexpected("ZuEngineContext.ContextItemHandle");
    }
    STDMETHODIMP HasContextItem(LONG, VARIANT_BOOL*) override {
        return Unexpected("ZuEngineContext.HasContextItem");
    }
    STDMETHODIMP ClearContextItem(LONG) override { return Unexpected("ZuEngineContext.ClearContextItem"); }
    STDMETHODIMP ContextItem(LONG, VARIANT*) override { return Unexpected("ZuEngineContext.ContextItem"); }
    STDMETHODIMP ClearContextItems() override { return Unexpected("ZuEngineContext.ClearContextItems"); }
    STDMETHODIMP Routine(BSTR, IDispatch**) override { return Unexpected("ZuEngineContext.Routine"); }
    STDMETHODIMP CallRoutine(IDispatch*, BSTR, SAFEARRAY**, VARIANT_BOOL*) override {
        return Unexpected("ZuEngineContext.CallRoutine");
    }
};

}  // namespace zu::fake
