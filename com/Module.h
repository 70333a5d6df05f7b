#pragma once

#include <windows.h>

#include <string>

namespace zu::com {

/// The DLL (or program) that this code is linked into: what is alive in it, and where its file is.
class Module {
public:
    static void ObjectBorn() noexcept;
    static void ObjectGone() noexcept;
    /// A lock that a client holds through IClassFactory::LockServer.
    static void Lock() noexcept;
    static void Unlock() noexcept;
    /// State that waits for the end of a thread's apartment keeps the code loaded too: it is called back.
    static void ThreadStateBorn() noexcept;
    static void ThreadStateGone() noexcept;

    /// Living objects (locks and thread states not counted).
    static LONG objects() noexcept;
    static LONG threadStates() noexcept;
    /// S_OK when nothing of this module is in use any more, else S_FALSE.
    static HRESULT CanUnloadNow() noexcept;

    static HMODULE handle() noexcept;
    /// Full path of the file. Throws ComError.
    static std::wstring Path();
    /// Name of the file without folder and extension: the source of errors.
    static std::wstring Name();
};

/// A member of this type counts the object that it sits in.
class ObjectCount {
public:
    ObjectCount() noexcept { Module::ObjectBorn(); }
    ~ObjectCount() { Module::ObjectGone(); }
    ObjectCount(const ObjectCount&) = delete;
    ObjectCount& operator=(const ObjectCount&) = delete;
};

}  // namespace zu::com
