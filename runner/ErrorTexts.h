#pragma once

#include <windows.h>

#include <string>

namespace zu::runner {

/// The system's text for an HRESULT, without line ends; its number when the system knows none.
std::wstring SystemErrorText(HRESULT code);

/// A text for an error that a script engine reported without one: the usual wording of script errors, the
/// system's text, or the number.
std::wstring ScriptErrorText(HRESULT code);

/// The code as people write it: 0x800A000D.
std::wstring ErrorNumber(HRESULT code);

}  // namespace zu::runner
