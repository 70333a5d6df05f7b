#pragma once

#include "com/Bstr.h"
#include "com/ComPtr.h"
#include "com/SafeArray.h"
#include "com/Variant.h"
#include "component/engine/EngineContext.h"
#include "component/table/DataView.h"

namespace zu::component {

/// Calls a routine of the engine's script once for each record of a view. While it runs, the engine's context
/// items hold the view and the one-based number of the record in hand.
class RecordLoop {
public:
    /// Resolves the context items and the routine. Throws ComError when the engine has none of that name.
    RecordLoop(const EngineContext& context, DataView view, BSTR routineName);

    /// Runs until the view ends or the routine answers False. An error ends it where it is: the context items
    /// then stay as they are, and the error goes to the caller.
    void Run(com::SafeArray& arguments);

    /// Records for which the routine has answered True so far.
    LONG processed() const noexcept { return processed_; }

private:
    bool ProcessRecord(com::SafeArray& arguments);

    const EngineContext& context_;
    DataView view_;
    LONG viewItem_;
    LONG numberItem_;
    com::Bstr routineName_;
    com::ComPtr<IDispatch> routine_;
    LONG processed_ = 0;
};

}  // namespace zu::component
