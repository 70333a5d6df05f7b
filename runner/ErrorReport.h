#pragma once

#include <windows.h>

#include <string>

namespace zu::runner {

class ScriptSource;

/// An error of a script as its engine reported it.
struct ScriptError {
    HRESULT code = E_FAIL;
    std::wstring description;  ///< what went wrong, in words
    unsigned line = 0;         ///< counted from 1; 0 when the engine does not say
    unsigned column = 0;       ///< counted from 1; 0 when the engine does not say
};

/// The report for people: `file:line:col: message`, the source line, and a caret under the column.
/// The lines are separated by '\n'; there is none at the end.
std::wstring ErrorReport(const ScriptSource& source, const ScriptError& error);

}  // namespace zu::runner
