#pragma once

#include <windows.h>

#include <string>

#include "idl/FailureReasons.h"

namespace zu::component {

/// One call of a function that works on a table. With it the engine's last error begins anew: afterwards it
/// is the reason why the function, or a row that it worked on, has failed, or there is none.
///
/// Functions that only read what is at hand have none, so that they can be used to tell about a failure.
class FunctionCall {
public:
    FunctionCall() noexcept;
    ~FunctionCall();
    FunctionCall(const FunctionCall&) = delete;
    FunctionCall& operator=(const FunctionCall&) = delete;
};

/// Makes `text` the engine's last error: why the function that is running fails. An engine of another maker
/// has no place for it.
void TellReason(HRESULT code, const std::wstring& text, ReasonFor whom = ReasonFor::User) noexcept;

/// The same for the exception being handled, `place` in front of its text. The thread's error information is
/// left clean.
void TellCurrentException(const std::wstring& place = {}) noexcept;

}  // namespace zu::component
