#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "com/ComPtr.h"
#include "runner/ScriptHost.h"

namespace zu::bench {

/// The routine "Touch" with two arguments, which answers True and does nothing else: in VBScript, JScript or
/// C++.
class Routine {
public:
    /// `language`: "vbscript", "jscript", anything else for C++.
    explicit Routine(const std::wstring& language);
    ~Routine();
    Routine(const Routine&) = delete;
    Routine& operator=(const Routine&) = delete;

    IDispatch* holder() const noexcept { return holder_.get(); }

private:
    std::unique_ptr<runner::ScriptHost> host_;
    com::ComPtr<IDispatch> holder_;
};

}  // namespace zu::bench
