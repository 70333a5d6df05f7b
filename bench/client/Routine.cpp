#include "bench/client/Routine.h"

#include <stdexcept>

#include "runner/ScriptSource.h"
#include "runner/Unknown.h"

namespace zu::bench {
namespace {

constexpr DISPID kTouch = 1;

class NativeRoutine final : public runner::Unknown<IDispatch> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        *ids = lstrcmpiW(*names, L"Touch") == 0 ? kTouch : DISPID_UNKNOWN;
        return *ids == kTouch ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        if (id != kTouch || parameters->cArgs != 2) return DISP_E_BADPARAMCOUNT;
        if (result) {
            result->vt = VT_BOOL;
            result->boolVal = VARIANT_TRUE;
        }
        return S_OK;
    }
};

runner::ScriptSource Source(const std::wstring& language) {
    if (language == L"jscript")
        return runner::ScriptSource::FromText(L"touch", L"function Touch(a, b) { return true; }",
                                              runner::Language::JScript);
    return runner::ScriptSource::FromText(L"touch", L"Function Touch(a, b)\nTouch = True\nEnd Function",
                                          runner::Language::VBScript);
}

}  // namespace

Routine::Routine(const std::wstring& language) {
    if (language != L"vbscript" && language != L"jscript") {
        holder_ = runner::MakeUnknown<NativeRoutine>().tryAs<IDispatch>();
        return;
    }
    const runner::ScriptSource source = Source(language);
    host_ = std::make_unique<runner::ScriptHost>(source.language(), [](const runner::ScriptError&) {});
    host_->Run(source);
    holder_ = host_->routines();
    if (!holder_) throw std::runtime_error("the script has no routines");
}

Routine::~Routine() {
    holder_.reset();
    if (host_) host_->Close();
}

}  // namespace zu::bench
