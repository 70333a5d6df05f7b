#pragma once

#include <windows.h>

#include <ocidl.h>

#include <map>
#include <string>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "runner/Unknown.h"

namespace zu::runner {

/// An object with the events of the expression parser (ProvideValue), fired by the test. It is its own
/// connection point.
class EventSource final
    : public Unknown<IDispatch, IConnectionPointContainer, IConnectionPoint, IProvideClassInfo> {
public:
    EventSource();

    /// Fires ProvideValue(name, value by reference); answers what the handlers made of `value`.
    std::wstring Ask(const std::wstring& name, const std::wstring& value);
    /// Fires ProvideValue and answers what the handler returned.
    std::wstring AskForResult(const std::wstring& name, const std::wstring& value);
    std::size_t sinks() const noexcept { return sinks_.size(); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;

private:
    com::Variant Fire(const std::wstring& name, com::Variant& value);

    com::ComPtr<ITypeInfo> class_;
    IID events_{};
    std::map<DWORD, com::ComPtr<IDispatch>> sinks_;
    DWORD lastCookie_ = 0;
};

}  // namespace zu::runner
