#pragma once

#include <windows.h>

#include <oaidl.h>

#include "com/ComPtr.h"
#include "runner/Unknown.h"

namespace zu::runner {

class ScriptHost;

/// The routines of the running script as an object for the engine.
///
/// It stands between the two, because the script's own object exists only while the script runs, and because
/// a failing routine answers no more than "reported already": callers get the routine's own error instead.
class ScriptRoutines final : public Unknown<IDispatch> {
public:
    explicit ScriptRoutines(ScriptHost& host) : host_(&host) {}

    /// The script is gone: every call fails from now on.
    void Disconnect() noexcept;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

private:
    com::ComPtr<IDispatch> routines() noexcept;

    ScriptHost* host_;
    com::ComPtr<IDispatch> routines_;  // fetched at the first call
};

}  // namespace zu::runner
