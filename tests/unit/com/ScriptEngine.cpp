#include "ScriptEngine.h"

#include <windows.h>

#include <activscp.h>

#include <memory>

#include "com/ComError.h"

namespace zu::com::test {

class ScriptEngine::Site final : public IActiveScriptSite {
public:
    explicit Site(ComPtr<IDispatch> target) : target_(std::move(target)) {}
    std::wstring error;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, __uuidof(IActiveScriptSite));
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // Lives as long as the engine beside it.
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemInfo(LPCOLESTR, DWORD mask, IUnknown** item, ITypeInfo** type) override {
        if (type) *type = nullptr;
        if ((mask & SCRIPTINFO_IUNKNOWN) != 0) *item = target_.copy();
        return S_OK;
    }
    STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError* problem) override {
        EXCEPINFO exception{};
        problem->GetExceptionInfo(&exception);
        error = Bstr::Adopt(exception.bstrDescription).str();
        if (error.empty()) error = L"error " + std::to_wstring(static_cast<unsigned long>(exception.scode));
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrHelpFile);
        return S_OK;
    }
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }

private:
    ComPtr<IDispatch> target_;
};

struct ScriptEngine::Parts {
    explicit Parts(ComPtr<IDispatch> target) : site(std::move(target)) {}
    Site site;
    ComPtr<IActiveScript> engine;
};

ScriptEngine::ScriptEngine(const wchar_t* language, ComPtr<IDispatch> target)
    : parts_(std::make_unique<Parts>(std::move(target)).release()) {
    CoInitialize(nullptr);
    CLSID id{};
    Check(CLSIDFromProgID(language, &id));
    Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                           parts_->engine.putVoid()));
    Check(parts_->engine->SetScriptSite(&parts_->site));
    Check(parts_->engine.as<IActiveScriptParse>()->InitNew());
    Check(parts_->engine->AddNamedItem(L"Target", SCRIPTITEM_ISVISIBLE));
    Check(parts_->engine->SetScriptState(SCRIPTSTATE_CONNECTED));
}

ScriptEngine::~ScriptEngine() {
    parts_->engine->Close();
    delete parts_;
    CoUninitialize();
}

std::wstring ScriptEngine::Run(const wchar_t* code) {
    parts_->site.error.clear();
    const HRESULT result = parts_->engine.as<IActiveScriptParse>()->ParseScriptText(
        code, nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE, nullptr, nullptr);
    if (FAILED(result) && parts_->site.error.empty()) return L"failed";
    return parts_->site.error;
}

}  // namespace zu::com::test
