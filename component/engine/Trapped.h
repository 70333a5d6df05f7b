#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "component/engine/FailureReason.h"

namespace zu::component {

/// Runs `body` and swallows what it throws, for what may fail without harm. The thread's error information is
/// left clean, since nobody is meant to ask for it.
template <class Body>
void Trap(Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        SetErrorInfo(0, nullptr);
    }
}

/// As Trap, for whole functions: the public ones and the members of an open table never raise, they answer
/// the result that they had reached, and the engine's last error says why.
template <class Body>
void TrapAndTell(Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        TellCurrentException();
    }
}

/// The boundary of a function with a plain result: `*result` is `failure` until `body` has answered.
template <class T, class Body>
HRESULT Trapped(T* result, T failure, Body&& body) noexcept {
    if (!result) return E_POINTER;
    *result = failure;
    TrapAndTell([&] { *result = std::forward<Body>(body)(); });
    return S_OK;
}

/// The same with an object as the result, `body` answering a ComPtr; failure is no object.
template <class T, class Body>
HRESULT Trapped(T** result, Body&& body) noexcept {
    if (!result) return E_POINTER;
    *result = nullptr;
    TrapAndTell([&] { *result = std::forward<Body>(body)().detach(); });
    return S_OK;
}

/// The same with a VARIANT as the result, `body` answering a com::Variant; failure is Empty.
template <class Body>
HRESULT Trapped(VARIANT* result, Body&& body) noexcept {
    if (!result) return E_POINTER;
    VariantInit(result);
    TrapAndTell([&] { *result = std::forward<Body>(body)().detach(); });
    return S_OK;
}

/// The same with a Boolean as the result; failure is False.
template <class Body>
HRESULT Trapped(VARIANT_BOOL* result, Body&& body) noexcept {
    return Trapped(result, VARIANT_BOOL{VARIANT_FALSE},
                   [&] { return com::ToVariantBool(std::forward<Body>(body)()); });
}

}  // namespace zu::component
