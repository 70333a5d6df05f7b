#pragma once

#include "com/ComPtr.h"
#include "component/engine/EngineContext.h"
#include "component/engine/EngineData.h"
#include "component/engine/EngineMessages.h"
#include "idl/FailureReasons.h"
#include "idl/JobReports.h"
#include "idl/Zuengine.h"

namespace zu::component {

/// One thread's references to the host engine: the engine object under each of its five interfaces.
class EngineLink {
public:
    /// Creates the engine's project object by its name and takes the engine from it. The first step that
    /// fails ends the start without a word; the references not set by then stay empty, and the functions that
    /// need them fail with "object variable not set".
    void Start() noexcept;

    const EngineContext& context() const noexcept { return context_; }
    const EngineData& data() const noexcept { return data_; }
    const EngineMessages& messages() const noexcept { return messages_; }
    /// Where long jobs are watched; null with an engine that does not.
    com::ComPtr<JobReports> jobReports() const noexcept { return core_.tryAs<JobReports>(); }
    /// Where the reasons of failures are told; null with an engine that does not take them.
    FailureReasons* reasons() const noexcept { return reasons_.get(); }
    /// The window that modal windows belong to; null for none. Throws ComError.
    HWND OwnerWindow() const;

private:
    com::ComPtr<ZuEngineCore> core_;
    EngineContext context_;
    EngineData data_;
    EngineMessages messages_;
    com::ComPtr<ZuEngineUserInterface> userInterface_;
    com::ComPtr<FailureReasons> reasons_;
};

/// The link of the calling thread, started before the first use on the thread and released with the thread's
/// apartment.
const EngineLink& Engine();

}  // namespace zu::component
