#include "component/engine/EngineMessages.h"

#include "com/ComError.h"

namespace zu::component {

using com::Check;
using com::Required;

void EngineMessages::Trace(std::wstring_view text) const {
    const com::Bstr message(text);
    Check(Required(engine_.get())->Trace(message.get()));
}

void EngineMessages::RaiseError(EngineError error, com::SafeArray insertions) const {
    Check(Required(engine_.get())->RaiseError(static_cast<LONG>(error), insertions.address()));
}

com::Bstr EngineMessages::MessageText(ULONG code, com::SafeArray insertions) const {
    com::Bstr text;
    Check(Required(engine_.get())->MessageText(static_cast<LONG>(code), insertions.address(), text.put()));
    return text;
}

}  // namespace zu::component
