#include "component/engine/EngineContext.h"

#include "com/ComError.h"

namespace zu::component {

using com::Check;
using com::Required;

LONG EngineContext::HandleOf(ContextItem item) const {
    LONG handle = 0;
    Check(Required(engine_.get())->ContextItemHandle(static_cast<LONG>(item), &handle));
    return handle;
}

com::Variant EngineContext::Value(LONG handle) const {
    com::Variant value;
    Check(Required(engine_.get())->ContextItem(handle, value.put()));
    return value;
}

com::Variant EngineContext::Save(LONG handle) const {
    com::Variant value;
    Check(Required(engine_.get())->SaveContextItem(handle, value.put()));
    return value;
}

void EngineContext::Set(LONG handle, const VARIANT& value) const {
    Check(Required(engine_.get())->SetContextItem(handle, value));
}

com::ComPtr<IDispatch> EngineContext::Routine(BSTR name) const {
    com::ComPtr<IDispatch> routine;
    Check(Required(engine_.get())->Routine(name, routine.put()));
    return routine;
}

bool EngineContext::CallRoutine(IDispatch* routine, BSTR name, SAFEARRAY** arguments) const {
    VARIANT_BOOL goOn = VARIANT_FALSE;
    Check(Required(engine_.get())->CallRoutine(routine, name, arguments, &goOn));
    return goOn != VARIANT_FALSE;
}

}  // namespace zu::component
