#pragma once

#include <string_view>

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/SafeArray.h"
#include "idl/Zuengine.h"

namespace zu::component {

/// Errors that the script's user sees. The engine has the texts; the insertions that each takes stand beside
/// it.
enum class EngineError : ULONG {
    kConditionFault = 0x80041017,   ///< position in the condition, description
    kNoRoutineName = 0x8004102C,    ///< name of the function
    kUpdateListFault = 0x80041031,  ///< none
    kFunctionMissing = 0x8004103C,  ///< name of the function
};

/// The engine's message interface. Every operation throws a ComError: "object variable not set" while the
/// engine is missing, otherwise what the engine answered.
class EngineMessages {
public:
    EngineMessages() noexcept = default;
    explicit EngineMessages(com::ComPtr<ZuEngineMessages> engine) noexcept : engine_(std::move(engine)) {}

    /// A diagnostic text for the engine's log.
    void Trace(std::wstring_view text) const;
    /// Shows or records the engine's text for an error, with these insertions.
    void RaiseError(EngineError error, com::SafeArray insertions) const;
    /// The engine's text for a message code, insertions made.
    com::Bstr MessageText(ULONG code, com::SafeArray insertions) const;

private:
    com::ComPtr<ZuEngineMessages> engine_;
};

}  // namespace zu::component
