#pragma once

#include <windows.h>

#include <span>

#include "com/ComError.h"
#include "com/Object.h"

namespace zu::com {

/// One class that clients can create.
struct ClassEntry {
    CLSID id;
    const wchar_t* progId;       ///< without version, e.g. L"ZuDBFFunctions.Functions"
    const wchar_t* description;  ///< for people who browse the registry
    /// Makes an object and answers the interface. Never throws.
    HRESULT (*create)(REFIID iid, void** object) noexcept;
};

/// Everything that a DLL's entry points need to know; constant data of its server.cpp.
struct Server {
    std::span<const ClassEntry> classes;
    unsigned typeLibraries = 1;  ///< resources 1 to n, all registered
};

/// The usual `create` of a ClassEntry: a default-constructed T.
template <class T>
HRESULT CreateObject(REFIID iid, void** object) noexcept {
    return Guard([&] { Check(MakeObject<T>()->QueryInterface(iid, object)); });
}

}  // namespace zu::com
