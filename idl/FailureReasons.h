#pragma once

#include <windows.h>

#include <unknwn.h>

// A private interface between this project's engine and component: why a function answered its failure value.
// Other engines do not answer it, and are told what their contract has a place for. It never leaves a
// process, and a change of its form takes a new identifier.

namespace zu {

/// The number of "there is no current record", which scripts know from other libraries.
inline constexpr HRESULT kNoCurrentRecord = static_cast<HRESULT>(0x800A0BCD);

/// Who is to learn of a reason.
enum class ReasonFor : LONG {
    Asking,  ///< whoever asks for the last error: what programs reckon with, such as a record not found
    User,    ///< the user as well, unless the engine has just told the same
};

/// The last error of a thread as the component's functions keep it. Calls may lie inside one another.
struct FailureReasons : IUnknown {
    /// A function begins: what was the last error is one no more.
    virtual HRESULT STDMETHODCALLTYPE BeginCall() noexcept = 0;
    /// It ends: what failed on the way and was tolerated, so that nobody was told, is forgotten.
    virtual HRESULT STDMETHODCALLTYPE EndCall() noexcept = 0;
    /// Why the function that is running fails, or a row that it works on.
    virtual HRESULT STDMETHODCALLTYPE TellReason(LONG code, const wchar_t* text, ReasonFor whom) noexcept = 0;
};

}  // namespace zu

__CRT_UUID_DECL(zu::FailureReasons, 0x5D0F86B2, 0x91C4, 0x4E27, 0xA8, 0x3B, 0x64, 0xF1, 0x0D, 0x9E, 0x72,
                0x35)
