#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

#include "com/ComError.h"
#include "com/ComPtr.h"

namespace zu::runner {

/// The engine behind the table functions, as the runner uses it: by name only, so that any engine registered
/// under the project's name works, also one that does not know all that is asked of it here.
class EngineLink {
public:
    /// Tries to create the engine's project object. Without one, scripts that do not need it run all the
    /// same.
    EngineLink();

    bool available() const noexcept { return static_cast<bool>(project_); }
    /// The project object; throws com::ComError with the reason when there is none.
    com::ComPtr<IDispatch> project() const;
    /// A new object of the component; throws com::ComError with the reason when it cannot be created.
    com::ComPtr<IDispatch> CreateFunctions() const;

    /// The folder where databases without a full path are looked for.
    void SetDataFolder(const std::wstring& folder);
    /// Where the engine finds the script's routines, and who is told its reports; with `trace` also its log.
    void Attach(IDispatch* routines, IDispatch* listener, bool trace);
    /// Takes both away again.
    void Detach() noexcept;

private:
    com::ComPtr<IDispatch> project_;
    com::ComError failure_{S_OK};
};

/// Creates an object by its registered name. Throws com::ComError that names the class and the reason.
com::ComPtr<IDispatch> CreateByName(const std::wstring& name);

}  // namespace zu::runner
