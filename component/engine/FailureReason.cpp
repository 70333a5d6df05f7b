#include "component/engine/FailureReason.h"

#include "com/ComError.h"
#include "component/engine/EngineLink.h"
#include "component/engine/RunTimeError.h"

namespace zu::component {

namespace {

/// Programs reckon with these: a record that is not there, and a job that the user has ended.
bool IsReckonedWith(HRESULT code) noexcept {
    return code == kNoCurrentRecord || code == E_ABORT;
}

FailureReasons* Reasons() noexcept {
    try {
        return Engine().reasons();
    } catch (...) {
        return nullptr;
    }
}

}  // namespace

FunctionCall::FunctionCall() noexcept {
    if (FailureReasons* const reasons = Reasons()) reasons->BeginCall();
}

FunctionCall::~FunctionCall() {
    if (FailureReasons* const reasons = Reasons()) reasons->EndCall();
}

void TellReason(HRESULT code, const std::wstring& text, ReasonFor whom) noexcept {
    if (FailureReasons* const reasons = Reasons()) reasons->TellReason(code, text.c_str(), whom);
}

void TellCurrentException(const std::wstring& place) noexcept {
    try {
        const com::ComError error = CurrentRunTimeError();
        TellReason(error.code(), place + DescriptionOf(error),
                   IsReckonedWith(error.code()) ? ReasonFor::Asking : ReasonFor::User);
    } catch (...) {  // NOLINT(bugprone-empty-catch): the caller has the failure value
    }
    SetErrorInfo(0, nullptr);
}

}  // namespace zu::component
