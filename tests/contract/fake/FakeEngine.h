#pragma once

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/uncalled/UncalledEngineContext.h"
#include "tests/contract/fake/uncalled/UncalledEngineCore.h"
#include "tests/contract/fake/uncalled/UncalledEngineData.h"
#include "tests/contract/fake/uncalled/UncalledEngineMessages.h"
#include "tests/contract/fake/uncalled/UncalledEngineUserInterface.h"

namespace zu::fake {

/// The engine object under its five interfaces.
class FakeEngine final : public FakeObject<UncalledEngineCore, UncalledEngineContext, UncalledEngineData,
                                           UncalledEngineMessages, UncalledEngineUserInterface> {
public:
    FakeEngine() : FakeObject("engine") {}

    STDMETHODIMP SetContextItem(LONG handle, VARIANT value) override;
    STDMETHODIMP SaveContextItem(LONG handle, VARIANT* value) override;
    STDMETHODIMP ContextItemHandle(LONG item, LONG* result) override;
    STDMETHODIMP ContextItem(LONG handle, VARIANT* result) override;
    STDMETHODIMP Routine(BSTR name, IDispatch** result) override;
    STDMETHODIMP CallRoutine(IDispatch* routine, BSTR name, SAFEARRAY** arguments,
                             VARIANT_BOOL* result) override;

    STDMETHODIMP ToBoolean(VARIANT value, VARIANT_BOOL* result) override;
    STDMETHODIMP NewRecordVariable(IDispatch** result) override;
    STDMETHODIMP DefaultTechnology(BSTR* result) override;
    STDMETHODIMP RecordAdded(IDispatch* values) override;
    STDMETHODIMP DatabaseService(IDispatch** result) override;

    STDMETHODIMP Trace(BSTR text) override;
    STDMETHODIMP RaiseError(LONG code, SAFEARRAY** arguments) override;
    STDMETHODIMP MessageText(LONG code, SAFEARRAY** arguments, BSTR* result) override;
    STDMETHODIMP DecimalPlaces(LONG type, LONG* result) override;
    STDMETHODIMP OwnerWindow(LONG* result) override;

private:
    int routineCalls_ = 0;
};

}  // namespace zu::fake
