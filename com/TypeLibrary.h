#pragma once

#include <windows.h>

#include <oleauto.h>

#include "com/ComPtr.h"

namespace zu::com {

/// The type libraries that this module carries: the TYPELIB resources 1, 2, ... of its own file. They are
/// always taken from there and never from the registry, so that objects also work where nothing is
/// registered.
///
/// Nothing is kept: a COM reference in static storage would have to be released while the DLL is unloading.
class TypeLibrary {
public:
    /// Type library resource `number` (from 1). Throws ComError when there is none.
    static ComPtr<ITypeLib> Load(unsigned number);

    /// The description of an interface or class in whichever library of the module has it.
    /// Throws ComError (TYPE_E_ELEMENTNOTFOUND).
    static ComPtr<ITypeInfo> Find(REFGUID id);
};

}  // namespace zu::com
