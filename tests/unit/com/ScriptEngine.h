#pragma once

#include <string>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace zu::com::test {

/// A script engine of the system with one object in sight, under the name `Target`.
class ScriptEngine {
public:
    /// `language` is L"VBScript" or L"JScript".
    ScriptEngine(const wchar_t* language, ComPtr<IDispatch> target);
    ~ScriptEngine();
    ScriptEngine(const ScriptEngine&) = delete;
    ScriptEngine& operator=(const ScriptEngine&) = delete;

    /// Runs statements; answers the error text, empty when they ended well.
    std::wstring Run(const wchar_t* code);

private:
    class Site;
    struct Parts;
    Parts* parts_;
};

}  // namespace zu::com::test
