#include "host/engine/EngineState.h"

#include "com/ThreadState.h"
#include "host/service/TableReuse.h"

namespace zu::host {

EngineState::~EngineState() {
    try {
        TableReuse::Instance().CloseIdle();
    } catch (...) {  // NOLINT(bugprone-empty-catch): the timer closes them a moment later
    }
}

EngineState& EngineState::Current() {
    return com::ThreadState<EngineState>::Current();
}

}  // namespace zu::host
