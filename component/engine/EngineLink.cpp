#include "component/engine/EngineLink.h"

#include "com/ComError.h"

namespace zu::component {

using com::Check;
using com::ComPtr;

namespace {

/// Any engine may stand behind the name; no class id is known here.
constexpr const wchar_t* kProjectName = L"Zuengine.Zuproject";

ComPtr<ZuProject> CreateProject() {
    CLSID project{};
    Check(CLSIDFromProgID(kProjectName, &project));
    ComPtr<ZuProject> result;
    Check(CoCreateInstance(project, nullptr, CLSCTX_INPROC_SERVER, __uuidof(ZuProject), result.putVoid()));
    return result;
}

}  // namespace

void EngineLink::Start() noexcept {
    try {
        ComPtr<IDispatch> engine;
        Check(com::Required(CreateProject().get())->Engine(engine.put()));
        core_ = engine.as<ZuEngineCore>();
        reasons_ = core_.tryAs<FailureReasons>();
        context_ = EngineContext(engine.as<ZuEngineContext>());
        data_ = EngineData(engine.as<ZuEngineData>());
        messages_ = EngineMessages(engine.as<ZuEngineMessages>());
        userInterface_ = engine.as<ZuEngineUserInterface>();
    } catch (...) {
        // Without an engine every function answers its failure value: there is nobody to tell.
        SetErrorInfo(0, nullptr);
    }
}

HWND EngineLink::OwnerWindow() const {
    LONG window = 0;
    Check(com::Required(userInterface_.get())->OwnerWindow(&window));
    // The contract hands windows out as numbers; handles have 32 significant bits in every process.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(window));
}

}  // namespace zu::component
