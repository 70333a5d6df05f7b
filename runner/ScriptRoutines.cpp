#include "runner/ScriptRoutines.h"

#include "com/Bstr.h"
#include "com/ComError.h"
#include "runner/ScriptHost.h"

namespace zu::runner {
namespace {

// What Invoke answers for an error that the script's site has been told already.
constexpr HRESULT kAlreadyReported = static_cast<HRESULT>(0x80020101);

void Fill(EXCEPINFO& exception, const ScriptError& error) {
    exception = EXCEPINFO{};
    exception.scode = FAILED(error.code) ? error.code : E_FAIL;
    exception.bstrDescription = SysAllocString(error.description.c_str());
}

}  // namespace

com::ComPtr<IDispatch> ScriptRoutines::routines() noexcept {
    if (!host_) return {};
    if (!routines_) routines_ = host_->routines();
    return routines_;
}

void ScriptRoutines::Disconnect() noexcept {
    host_ = nullptr;
    routines_.reset();
}

HRESULT ScriptRoutines::GetTypeInfoCount(UINT* count) {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT ScriptRoutines::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info) *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT ScriptRoutines::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
    const com::ComPtr<IDispatch> target = routines();
    if (!target) return CO_E_OBJNOTCONNECTED;
    return target->GetIDsOfNames(IID_NULL, names, count, locale, ids);
}

HRESULT ScriptRoutines::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                               VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
    const com::ComPtr<IDispatch> target = routines();
    if (!target) return CO_E_OBJNOTCONNECTED;
    const HRESULT code =
        target->Invoke(id, IID_NULL, locale, flags, parameters, result, exception, badArgument);
    if (!exception || !host_) return code;
    if (code == kAlreadyReported && host_->lastError()) {
        Fill(*exception, *host_->lastError());
        return DISP_E_EXCEPTION;
    }
    if (code == E_FAIL && parameters) {
        // VBScript says no more than this when a routine takes another number of arguments.
        Fill(*exception, {E_FAIL, L"the routine takes another number of arguments than the " +
                                      std::to_wstring(parameters->cArgs) + L" that it is given"});
        return DISP_E_EXCEPTION;
    }
    return code;
}

}  // namespace zu::runner
