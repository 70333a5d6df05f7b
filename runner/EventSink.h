#pragma once

#include <windows.h>

#include <oaidl.h>

#include <map>
#include <string>

#include "com/ComPtr.h"
#include "runner/Unknown.h"

namespace zu::runner {

/// Receives the events of one object and calls the script's routine named prefix plus event, when there is
/// one.
class EventSink final : public Unknown<IDispatch> {
public:
    /// `events` describes the event interface `id`; `routines` holds the script's routines.
    EventSink(REFIID id, ITypeInfo& events, std::wstring prefix, com::ComPtr<IDispatch> routines);

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

protected:
    bool AnswersAsPrimary(REFIID id) const noexcept override { return id == id_; }

private:
    IID id_;
    std::wstring prefix_;
    com::ComPtr<IDispatch> routines_;
    std::map<DISPID, std::wstring> names_;
};

}  // namespace zu::runner
