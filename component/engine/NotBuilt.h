#pragma once

#include <windows.h>

namespace zu::component {

/// The answer of a member that is part of the type library and not built yet. The result is cleared all the
/// same, so that a caller that ignores the HRESULT finds nothing.
template <class T>
HRESULT NotBuilt(T* result) noexcept {
    if (!result) return E_POINTER;
    *result = T{};
    return E_NOTIMPL;
}

}  // namespace zu::component
