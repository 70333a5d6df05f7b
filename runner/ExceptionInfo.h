#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

#include "com/ComError.h"

namespace zu::runner {

/// What a dispatch call answers for a failure: fills `exception` (when given) from the thread's error
/// information and answers DISP_E_EXCEPTION; the codes by which automation reports bad arguments and unknown
/// members stay as they are.
HRESULT DispatchFailure(HRESULT code, EXCEPINFO* exception) noexcept;

/// The error that a failed dispatch call stands for, with the texts of `exception`, whose texts are freed.
com::ComError ErrorOfCall(HRESULT code, EXCEPINFO& exception);

/// Runs a member of a dispatch object and answers S_OK or what DispatchFailure answers for its exception.
template <class Body>
HRESULT DispatchGuard(EXCEPINFO* exception, Body&& body) noexcept {
    SetErrorInfo(0, nullptr);
    const HRESULT code = com::Guard(std::forward<Body>(body));
    return FAILED(code) ? DispatchFailure(code, exception) : S_OK;
}

}  // namespace zu::runner
