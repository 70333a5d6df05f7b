#include "runner/ScriptHost.h"

#include <utility>

#include "runner/ErrorTexts.h"
#include "runner/ExceptionInfo.h"
#include "runner/ScriptSource.h"

namespace zu::runner {
namespace {

// What the parse and run calls answer for an error that OnScriptError has told already.
constexpr HRESULT kAlreadyReported = static_cast<HRESULT>(0x80020101);
constexpr DWORD_PTR kSourceCookie = 1;

// An error without a position, from what a parse or run call answers.
ScriptError ErrorOf(HRESULT code, EXCEPINFO& exception) {
    const com::ComError error = ErrorOfCall(code, exception);
    ScriptError result;
    result.code = error.code();
    result.description = error.description();
    return result;
}

com::ComPtr<IActiveScript> CreateEngine(Language language) {
    CLSID id{};
    com::ComPtr<IActiveScript> engine;
    HRESULT code = CLSIDFromProgID(EngineName(language), &id);
    if (SUCCEEDED(code)) {
        code = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript), engine.putVoid());
    }
    if (FAILED(code)) {
        throw com::ComError(code, std::wstring(L"the system has no script engine ") + EngineName(language) +
                                      L": " + ScriptErrorText(code));
    }
    return engine;
}

}  // namespace

ScriptHost::ScriptHost(Language language, Report report)
    : report_(std::move(report)),
      site_(MakeUnknown<ScriptSite>([this](const ScriptError& error) { ReportError(error); },
                                    [this] { return stopped(); })),
      engine_(CreateEngine(language)),
      parser_(engine_.as<IActiveScriptParse>()) {
    com::Check(engine_->SetScriptSite(site_.get()));
    com::Check(parser_->InitNew());
}

ScriptHost::~ScriptHost() {
    Close();
}

void ScriptHost::Add(const std::wstring& name, com::ComPtr<IDispatch> object, bool global) {
    site_->Add(name, std::move(object));
    const DWORD flags = SCRIPTITEM_ISVISIBLE | (global ? SCRIPTITEM_GLOBALMEMBERS : 0);
    com::Check(engine_->AddNamedItem(name.c_str(), flags));
}

void ScriptHost::Run(const ScriptSource& source) {
    EXCEPINFO exception{};
    parsing_ = true;
    HRESULT code = parser_->ParseScriptText(source.text().c_str(), nullptr, nullptr, nullptr, kSourceCookie,
                                            0, SCRIPTTEXT_ISVISIBLE, nullptr, &exception);
    // Some engines answer that they have reported an error, and have not.
    if (FAILED(code) && !failed_) ReportError(ErrorOf(code, exception));
    parsing_ = false;
    if (FAILED(code)) return;
    // Top-level code runs here; before that, the engine has only read it.
    code = engine_->SetScriptState(SCRIPTSTATE_CONNECTED);
    if (FAILED(code) && !failed_) ReportError(ErrorOf(code, exception));
}

void ScriptHost::ReportError(ScriptError error) {
    // The failure by which a stopped script is left is none of its own.
    if (stopped_) return;
    failed_ = true;
    if (error.description.empty()) {
        const bool unexplained = error.code == E_FAIL || error.code == kAlreadyReported;
        error.description = parsing_ && unexplained ? L"Syntax error" : ScriptErrorText(error.code);
    }
    lastError_ = error;
    report_(error);
}

com::ComPtr<IDispatch> ScriptHost::routines() const {
    com::ComPtr<IDispatch> result;
    if (engine_) engine_->GetScriptDispatch(nullptr, result.put());
    return result;
}

bool ScriptHost::Stop() noexcept {
    stopped_ = true;
    EXCEPINFO exception{};
    exception.scode = E_ABORT;
    return engine_ && SUCCEEDED(engine_->InterruptScriptThread(SCRIPTTHREADID_BASE, &exception, 0));
}

void ScriptHost::Close() noexcept {
    if (engine_) engine_->Close();
    parser_.reset();
    engine_.reset();
    if (site_) site_->Clear();
}

}  // namespace zu::runner
