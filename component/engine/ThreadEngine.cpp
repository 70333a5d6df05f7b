#include "com/ThreadState.h"
#include "component/engine/EngineLink.h"

namespace zu::component {

namespace {

/// What the component keeps for one thread.
struct ThreadEngine {
    EngineLink link;
    bool started = false;
};

/// A thread without an apartment of its own has nothing that could end its state, and nothing to create an
/// engine in. It is looked at again with every use, since it may get an apartment later.
bool HasApartment() noexcept {
    APTTYPE type{};
    APTTYPEQUALIFIER qualifier{};
    return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) && qualifier != APTTYPEQUALIFIER_IMPLICIT_MTA;
}

}  // namespace

const EngineLink& Engine() {
    static const EngineLink kNoEngine;
    if (!HasApartment()) return kNoEngine;
    ThreadEngine& thread = com::ThreadState<ThreadEngine>::Current();
    if (!thread.started) {
        // Noted first: an engine that uses the component while it starts must not start another one.
        thread.started = true;
        thread.link.Start();
    }
    return thread.link;
}

}  // namespace zu::component
