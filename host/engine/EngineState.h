#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "host/engine/ContextItems.h"
#include "host/engine/JobReport.h"
#include "host/engine/Messages.h"
#include "host/engine/Routines.h"

namespace zu::host {

/// What all engine objects of one thread share: messages, context items, routines, the owner window.
///
/// It appears when a thread first uses the engine and goes when the thread leaves its last apartment, not
/// with the last engine object: a routine holder that a script handed in stays known while no engine object
/// is held.
struct EngineState {
    /// The state of the calling thread.
    static EngineState& Current();

    EngineState() = default;
    /// Closes the tables that are only kept for the next use: a process that ends at once would leave their
    /// journals behind.
    ~EngineState();
    EngineState(const EngineState&) = delete;
    EngineState& operator=(const EngineState&) = delete;

    Messages messages;
    ContextItems context;
    Routines routines;
    std::vector<std::unique_ptr<JobReport>> jobs;  ///< of the component, the innermost last
    LONG ownerWindow = 0;
    bool interactive = true;
};

}  // namespace zu::host
