#pragma once

#include <windows.h>

#include <string>

#include "com/ClassTable.h"

namespace zu::com {

/// For whom a registration is made.
enum class Scope { Machine, User };

/// The registry entries of a server: its classes (names with and without version, class id, file, threading)
/// and its type libraries.
class Registration {
public:
    /// Throws ComError when the path of the module cannot be told.
    explicit Registration(const Server& server);

    /// True when the rights suffice for the whole machine.
    static bool MayWriteMachine() noexcept;

    /// Throws ComError at the first entry that cannot be made.
    void Register(Scope scope) const;
    /// Removes all entries; those that are gone already, and names that belong to another server by now, are
    /// passed over. Throws ComError when an entry cannot be removed.
    void Unregister(Scope scope) const;

private:
    void RegisterClass(HKEY root, const ClassEntry& entry) const;
    void RegisterTypeLibrary(unsigned number, Scope scope) const;
    void UnregisterTypeLibrary(unsigned number, Scope scope) const;

    const Server& server_;
    std::wstring path_;
};

}  // namespace zu::com
