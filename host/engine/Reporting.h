#pragma once

#include <windows.h>

#include <utility>

namespace zu::host {

/// Whether the user is told of a failure, or only the caller by the HRESULT.
enum class Audience { Caller, User };

/// Turns the exception being handled into an HRESULT with error information, remembers it as the last error
/// of the thread and writes it to the log; for the user it is reported to the listener as well. Call it in a
/// catch block.
HRESULT ReportCurrentException(Audience audience) noexcept;

/// The boundary guard of the engine: runs `body`; S_OK, or what ReportCurrentException answers.
template <class Body>
HRESULT Guarded(Body&& body, Audience audience = Audience::Caller) noexcept {
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (...) {
        return ReportCurrentException(audience);
    }
}

/// As Guarded, for members that answer a value: `*result` is cleared first and set only on success.
/// A null `result` is E_POINTER.
template <class T, class Body>
HRESULT GuardedResult(T* result, Body&& body, Audience audience = Audience::Caller) noexcept {
    if (!result) return E_POINTER;
    *result = T{};
    return Guarded([&] { *result = std::forward<Body>(body)(); }, audience);
}

}  // namespace zu::host
