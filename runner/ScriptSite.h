#pragma once

#include <windows.h>

#include <activscp.h>

#include <functional>
#include <map>
#include <string>

#include "com/ComPtr.h"
#include "runner/ErrorReport.h"
#include "runner/Unknown.h"

namespace zu::runner {

/// What a script engine asks of its host: the named objects, and to whom errors are reported.
class ScriptSite final
    : public Unknown<IActiveScriptSite, IActiveScriptSiteWindow, IActiveScriptSiteInterruptPoll> {
public:
    /// `report` receives each error that no code of the script handles; `interrupted` tells whether the
    /// script is to end.
    ScriptSite(std::function<void(const ScriptError&)> report, std::function<bool()> interrupted);

    void Add(const std::wstring& name, com::ComPtr<IDispatch> object);
    /// Lets the objects go.
    void Clear() noexcept { objects_.clear(); }

    HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override;
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** object,
                                          ITypeInfo** type) override;
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR* version) override;
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT* result, const EXCEPINFO* exception) override;
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE state) override;
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override;
    HRESULT STDMETHODCALLTYPE OnEnterScript() override;
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override;

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;

    HRESULT STDMETHODCALLTYPE QueryContinue() override;

private:
    std::function<void(const ScriptError&)> report_;
    std::function<bool()> interrupted_;
    std::map<std::wstring, com::ComPtr<IDispatch>> objects_;
};

}  // namespace zu::runner
