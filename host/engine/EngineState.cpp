#include "host/engine/EngineState.h"

#include "com/ThreadState.h"

namespace zu::host {

EngineState& EngineState::Current() {
    return com::ThreadState<EngineState>::Current();
}

}  // namespace zu::host
