#pragma once

#include "idl/Zuengine.h"
#include "tests/contract/fake/Journal.h"

namespace zu::fake {

/// ZuEngineMessages with every operation a surprise: what the component is not meant to call ends up in the
/// journal.
class UncalledEngineMessages : public ZuEngineMessages {
public:
    using Interface = ZuEngineMessages;

    STDMETHODIMP Trace(BSTR) override { return Unexpected("ZuEngineMessages.Trace"); }
    STDMETHODIMP ClearLastError() override { return Unexpected("ZuEngineMessages.ClearLastError"); }
    STDMETHODIMP RaiseError(LONG, SAFEARRAY**) override { return Unexpected("ZuEngineMessages.RaiseError"); }
    STDMETHODIMP MessageText(LONG, SAFEARRAY**, BSTR*) override {
        return Unexpected("ZuEngineMessages.MessageText");
    }
    STDMETHODIMP get_LastError(BSTR*) override { return Unexpected("ZuEngineMessages.get_LastError"); }
    STDMETHODIMP get_LastErrorCode(LONG*) override {
        return Unexpected("ZuEngineMessages.get_LastErrorCode");
    }
    STDMETHODIMP get_LogFile(BSTR*) override { return Unexpected("ZuEngineMessages.get_LogFile"); }
    STDMETHODIMP get_Tracing(VARIANT_BOOL*) override { return Unexpected("ZuEngineMessages.get_Tracing"); }
    STDMETHODIMP put_Tracing(VARIANT_BOOL) override { return Unexpected("ZuEngineMessages.put_Tracing"); }
    STDMETHODIMP get_Listener(IDispatch**) override { return Unexpected("ZuEngineMessages.get_Listener"); }
    STDMETHODIMP putref_Listener(IDispatch*) override {
        return Unexpected("ZuEngineMessages.putref_Listener");
    }
};

}  // namespace zu::fake
