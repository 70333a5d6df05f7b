#pragma once

#include <string_view>

#include "com/ComPtr.h"
#include "com/Variant.h"
#include "idl/Zuengine.h"

namespace zu::component {

/// The context items that the component reads and sets, by the engine's numbers.
enum class ContextItem : LONG {
    kRecordNumber = 2,  ///< one-based number of the record being processed
    kDataView = 6,      ///< the view being processed
};

/// The engine's context interface: its context items and the routines of its script. Every operation throws a
/// ComError: "object variable not set" while the engine is missing, otherwise what the engine answered.
class EngineContext {
public:
    EngineContext() noexcept = default;
    explicit EngineContext(com::ComPtr<ZuEngineContext> engine) noexcept : engine_(std::move(engine)) {}

    /// The handle under which the engine knows an item; valid as long as the engine.
    LONG HandleOf(ContextItem item) const;
    com::Variant Value(LONG handle) const;
    /// The value to put back later with Set.
    com::Variant Save(LONG handle) const;
    void Set(LONG handle, const VARIANT& value) const;

    /// The script's routine of this name. The engine fails when there is none.
    com::ComPtr<IDispatch> Routine(BSTR name) const;
    /// Runs a routine. True: go on with the next record.
    bool CallRoutine(IDispatch* routine, BSTR name, SAFEARRAY** arguments) const;

private:
    com::ComPtr<ZuEngineContext> engine_;
};

}  // namespace zu::component
