#include "component/table/ParserEvents.h"

#include "com/Variant.h"

namespace zu::component {

namespace {

/// Dispatch ids of the events.
constexpr DISPID kProvideValue = 1;
constexpr DISPID kSyntaxError = 2;

/// The argument of an event with two, which arrive last first.
VARIANT& Argument(const DISPPARAMS& parameters, UINT position) {
    return parameters.rgvarg[1 - position];
}

HRESULT ProvideValue(ParserClient& client, const DISPPARAMS& parameters) {
    const VARIANT& name = Argument(parameters, 0);
    const VARIANT& value = Argument(parameters, 1);
    if (name.vt != VT_BSTR || value.vt != (VT_BYREF | VT_VARIANT) || !value.pvarVal)
        return DISP_E_TYPEMISMATCH;
    client.ProvideValue(name.bstrVal, *value.pvarVal);
    return S_OK;
}

HRESULT SyntaxError(ParserClient& client, const DISPPARAMS& parameters) {
    const VARIANT& number = Argument(parameters, 0);
    const VARIANT& text = Argument(parameters, 1);
    if (number.vt != (VT_BYREF | VT_I4) || !number.plVal || text.vt != (VT_BYREF | VT_BSTR) ||
        !text.pbstrVal) {
        return DISP_E_TYPEMISMATCH;
    }
    client.SyntaxError(*number.plVal, *text.pbstrVal);
    return S_OK;
}

}  // namespace

STDMETHODIMP ParserEvents::QueryInterface(REFIID id, void** object) {
    if (!object) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(_ZuParserEvents);
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) ParserEvents::AddRef() {
    return ++references_;
}

STDMETHODIMP_(ULONG) ParserEvents::Release() {
    const ULONG left = --references_;
    if (!left) delete this;
    return left;
}

STDMETHODIMP ParserEvents::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP ParserEvents::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}

STDMETHODIMP ParserEvents::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
    return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP ParserEvents::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                  EXCEPINFO*, UINT*) {
    if (event != kProvideValue && event != kSyntaxError) return S_OK;  // an event of a later parser
    if (!parameters || parameters->cArgs != 2 || !parameters->rgvarg) return DISP_E_BADPARAMCOUNT;
    if (!client_) return S_OK;
    return event == kProvideValue ? ProvideValue(*client_, *parameters) : SyntaxError(*client_, *parameters);
}

}  // namespace zu::component
