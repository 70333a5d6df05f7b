#include "runner/Session.h"

#include <utility>

#include "runner/EngineListener.h"
#include "runner/ExitCodes.h"
#include "runner/GlobalNames.h"
#include "runner/ScriptArguments.h"
#include "runner/WScriptObject.h"

namespace zu::runner {

Session::Session(ScriptSource source, const std::vector<std::wstring>& arguments, Console& console,
                 EngineLink& engine)
    : source_(std::move(source)),
      console_(console),
      engine_(engine),
      host_(source_.language(), [this](const ScriptError& error) { Report(error); }),
      arguments_(MakeUnknown<ScriptArguments>(arguments).tryAs<IDispatch>()),
      routines_(MakeUnknown<ScriptRoutines>(host_)),
      functions_(MakeUnknown<GlobalFunctions>([&engine] { return engine.CreateFunctions(); },
                                              static_cast<CallWatch*>(this))),
      interruption_([this] {
          // A job ends by itself; it is given the time to say how far it came.
          return working_ || calls_ > 0 || host_.Stop();
      }) {
    Add(L"WScript", MakeUnknown<WScriptObject>(*this).tryAs<IDispatch>(), false);
    Add(L"ZuRunner", MakeUnknown<GlobalNames>(*this).tryAs<IDispatch>(), true);
    Add(L"ZuFunctions", functions_.tryAs<IDispatch>(), true);
}

Session::~Session() {
    LetGo();
}

void Session::Add(const std::wstring& name, com::ComPtr<IDispatch> object, bool global) {
    host_.Add(name, std::move(object), global);
}

int Session::Run(bool trace) {
    const auto listener = MakeUnknown<EngineListener>(
        console_.err, [this] { return interruption_.raised(); }, [this] { host_.Stop(); }, working_);
    engine_.Attach(routines_.get(), listener.get(), trace);
    host_.Run(source_);
    LetGo();
    if (interruption_.raised()) return kExitInterrupted;
    if (host_.stopped()) return exitCode_;
    if (!host_.failed()) return kExitDone;
    return untold_ ? kExitUntold : kExitScriptError;
}

void Session::LetGo() noexcept {
    events_.DisconnectAll();
    engine_.Detach();
    host_.Close();
    routines_->Disconnect();
}

void Session::Report(const ScriptError& error) {
    untold_ = !console_.Tell(ErrorReport(source_, error)) || untold_;
}

void Session::OnReturn() {
    if (--calls_ == 0 && interruption_.raised()) Leave(kExitInterrupted);
}

void Session::Quit(int code) {
    exitCode_ = code;
    Leave(code);
}

void Session::Leave(int code) {
    if (host_.Stop()) throw com::ComError(E_ABORT, L"the script has ended");
    // This engine cannot be made to leave the script. Its variables stay as they are until the process is
    // gone.
    events_.DisconnectAll();
    engine_.Detach();
    ExitProcess(static_cast<UINT>(code));
}

void Session::Sleep(DWORD milliseconds) {
    if (!interruption_.Sleep(milliseconds)) throw com::ComError(E_ABORT, L"interrupted");
}

}  // namespace zu::runner
