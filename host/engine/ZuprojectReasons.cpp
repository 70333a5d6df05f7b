// The half of the engine object that keeps the last error for the component's functions.
#include "host/engine/EngineState.h"
#include "host/engine/Zuproject.h"

namespace zu::host {

HRESULT Zuproject::BeginCall() noexcept {
    return com::Guard([] { EngineState::Current().messages.Forget(); });
}

HRESULT Zuproject::EndCall() noexcept {
    return com::Guard([] { EngineState::Current().messages.ForgetTolerated(); });
}

HRESULT Zuproject::TellReason(LONG code, const wchar_t* text, ReasonFor whom) noexcept {
    return com::Guard([&] {
        Messages& messages = EngineState::Current().messages;
        const std::wstring_view reason = text ? text : L"";
        // What the engine has told itself needs no second report, also where the function adds the place.
        if (whom == ReasonFor::Asking || messages.HasTold(code, reason))
            messages.Keep(code, reason);
        else
            messages.Report(code, reason);
    });
}

}  // namespace zu::host
