#pragma once

#include <windows.h>

#include <oleauto.h>

#include <atomic>

#include "com/Module.h"
#include "idl/ZuParser.h"

namespace zu::component {

/// Answers the events of an expression object.
class ParserClient {
public:
    /// Puts what stands for `name` into `value`; leaves it alone when there is nothing of that name.
    virtual void ProvideValue(BSTR name, VARIANT& value) noexcept = 0;
    /// A fault in the expression. Both arguments belong to the parser and live for the call.
    virtual void SyntaxError(LONG& number, BSTR& text) noexcept = 0;

protected:
    ~ParserClient() = default;
};

/// The object that an expression object calls for its events. It lives as long as anybody holds it, its
/// client only until Leave.
class ParserEvents final : public IDispatch {
public:
    explicit ParserEvents(ParserClient& client) noexcept : client_(&client) {}
    ParserEvents(const ParserEvents&) = delete;
    ParserEvents& operator=(const ParserEvents&) = delete;

    /// No event reaches the client any more.
    void Leave() noexcept { client_ = nullptr; }

    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID event, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

private:
    ~ParserEvents() = default;

    ParserClient* client_;
    std::atomic<ULONG> references_{1};
    com::ObjectCount counted_;
};

}  // namespace zu::component
