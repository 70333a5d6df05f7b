#include "runner/ScriptSite.h"

#include <olectl.h>

#include "com/ComError.h"
#include "runner/ErrorTexts.h"
#include "runner/ExceptionInfo.h"

namespace zu::runner {
namespace {

ScriptError ReadError(IActiveScriptError& error) {
    ScriptError result;
    EXCEPINFO exception{};
    if (SUCCEEDED(error.GetExceptionInfo(&exception))) {
        const com::ComError call = ErrorOfCall(DISP_E_EXCEPTION, exception);
        result.code = call.code();
        result.description = call.description();
    }
    DWORD cookie = 0;
    ULONG line = 0;
    LONG column = -1;
    if (SUCCEEDED(error.GetSourcePosition(&cookie, &line, &column))) {
        result.line = static_cast<unsigned>(line) + 1;
        if (column >= 0) result.column = static_cast<unsigned>(column) + 1;
    }
    return result;
}

}  // namespace

ScriptSite::ScriptSite(std::function<void(const ScriptError&)> report, std::function<bool()> interrupted)
    : report_(std::move(report)), interrupted_(std::move(interrupted)) {}

void ScriptSite::Add(const std::wstring& name, com::ComPtr<IDispatch> object) {
    objects_[name] = std::move(object);
}

HRESULT ScriptSite::GetLCID(LCID* locale) {
    if (!locale) return E_POINTER;
    *locale = GetUserDefaultLCID();
    return S_OK;
}

HRESULT ScriptSite::GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** object, ITypeInfo** type) {
    if ((mask & SCRIPTINFO_ITYPEINFO) && type) *type = nullptr;
    if (!(mask & SCRIPTINFO_IUNKNOWN)) return (mask & SCRIPTINFO_ITYPEINFO) ? TYPE_E_ELEMENTNOTFOUND : S_OK;
    if (!name || !object) return E_POINTER;
    *object = nullptr;
    const auto found = objects_.find(name);
    if (found == objects_.end()) return TYPE_E_ELEMENTNOTFOUND;
    *object = found->second.copy();
    return S_OK;
}

HRESULT ScriptSite::GetDocVersionString(BSTR*) {
    return E_NOTIMPL;
}
HRESULT ScriptSite::OnScriptTerminate(const VARIANT*, const EXCEPINFO*) {
    return S_OK;
}
HRESULT ScriptSite::OnStateChange(SCRIPTSTATE) {
    return S_OK;
}
HRESULT ScriptSite::OnEnterScript() {
    return S_OK;
}
HRESULT ScriptSite::OnLeaveScript() {
    return S_OK;
}

HRESULT ScriptSite::OnScriptError(IActiveScriptError* error) {
    if (!error) return E_POINTER;
    return com::Guard([&] { report_(ReadError(*error)); });
}

HRESULT ScriptSite::GetWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = nullptr;
    return S_OK;
}

HRESULT ScriptSite::EnableModeless(BOOL) {
    return S_OK;
}

HRESULT ScriptSite::QueryContinue() {
    return interrupted_() ? S_FALSE : S_OK;
}

}  // namespace zu::runner
