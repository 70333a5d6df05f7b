#pragma once

#include <windows.h>

#include <oleauto.h>

#include <exception>
#include <string>
#include <utility>

namespace zu::com {

/// A failure inside a component, on its way to the boundary: an HRESULT and, where there is one, the text
/// that the caller may show.
class ComError : public std::exception {
public:
    explicit ComError(HRESULT code, std::wstring description = {}, std::wstring source = {})
        : code_(code), description_(std::move(description)), source_(std::move(source)) {}

    HRESULT code() const noexcept { return code_; }
    const std::wstring& description() const noexcept { return description_; }
    const std::wstring& source() const noexcept { return source_; }
    const char* what() const noexcept override { return "automation error"; }

private:
    HRESULT code_;
    std::wstring description_;
    std::wstring source_;
};

/// Error numbers of the automation run time (the low word of 0x800A....) that scripts know.
inline constexpr HRESULT kOverflow = static_cast<HRESULT>(0x800A0006);
inline constexpr HRESULT kSubscriptOutOfRange = static_cast<HRESULT>(0x800A0009);
inline constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);
inline constexpr HRESULT kObjectNotSet = static_cast<HRESULT>(0x800A005B);
inline constexpr HRESULT kInvalidFriendCall = static_cast<HRESULT>(0x800A0061);
inline constexpr HRESULT kDuplicateKey = static_cast<HRESULT>(0x800A01C9);

/// Throws a ComError for a failing HRESULT, taking the thread's error information (description, source)
/// along.
[[noreturn]] void ThrowFailure(HRESULT result);

/// The same when `result` is a failure.
inline void Check(HRESULT result) {
    if (FAILED(result)) ThrowFailure(result);
}

/// Throws kObjectNotSet when `pointer` is null; otherwise answers it.
template <class T>
T* Required(T* pointer) {
    if (!pointer) throw ComError(kObjectNotSet, L"Object variable not set");
    return pointer;
}

/// Turns the exception being handled into an HRESULT and the thread's error information. Call it only inside
/// a catch block. Known types: ComError, zu::Error, std::bad_alloc, other std::exception.
HRESULT TranslateCurrentException() noexcept;

/// The one guard at every boundary: runs `body` and answers S_OK, or the translation of what it threw.
template <class Body>
HRESULT Guard(Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (...) {
        return TranslateCurrentException();
    }
}

/// As Guard, for members that answer a value: `*result` is cleared first and set only on success.
/// A null `result` is E_POINTER.
template <class T, class Body>
HRESULT GuardResult(T* result, Body&& body) noexcept {
    if (!result) return E_POINTER;
    *result = T{};
    return Guard([&] { *result = std::forward<Body>(body)(); });
}

}  // namespace zu::com
