#pragma once

#include "com/ComPtr.h"

namespace zu::component {

/// The object of this component behind an interface pointer, for the operations that are not published.
/// `Class` names itself by `static const IID kInternals` and answers it in QueryMore with a pointer to
/// itself. Null for an object of any other class, also for one that only has the same interfaces.
template <class Class>
com::ComPtr<Class> Internals(IUnknown* object) noexcept {
    com::ComPtr<Class> result;
    if (object) object->QueryInterface(Class::kInternals, result.putVoid());
    return result;
}

}  // namespace zu::component
