#pragma once

#include <objbase.h>

#include <string>
#include <vector>

#include "runner/ErrorReport.h"
#include "runner/NamedMembers.h"
#include "runner/ScriptHost.h"
#include "runner/ScriptSource.h"
#include "runner/ValueText.h"

namespace zu::runner {

/// A script host for tests: the script's `Note value` is written down, and so are its errors.
class RunningScript {
public:
    explicit RunningScript(Language language) : language_(language) {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        host_ = std::make_unique<ScriptHost>(language,
                                             [this](const ScriptError& error) { errors.push_back(error); });
        globals_ = MakeUnknown<NamedMembers>();
        globals_->AddMethod(L"Note", [this](const CallArguments& call) {
            notes += ValueText(call[0]) + L";";
            return com::Variant();
        });
        host_->Add(L"Globals", globals_.as<IDispatch>(), true);
    }
    ~RunningScript() {
        host_.reset();
        globals_.reset();
        CoUninitialize();
    }
    RunningScript(const RunningScript&) = delete;
    RunningScript& operator=(const RunningScript&) = delete;

    void Run(const wchar_t* code) { host_->Run(ScriptSource::FromText(L"test", code, language_)); }

    ScriptHost& host() noexcept { return *host_; }
    NamedMembers& globals() noexcept { return *globals_; }

    std::wstring notes;
    std::vector<ScriptError> errors;

private:
    Language language_;
    std::unique_ptr<ScriptHost> host_;
    com::ComPtr<NamedMembers> globals_;
};

}  // namespace zu::runner
