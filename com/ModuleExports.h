#pragma once

#include <windows.h>

#include "com/ClassTable.h"

// The bodies of a DLL's entry points. A server.cpp holds the class table and forwards:
//
//     const zu::com::ClassEntry kClasses[] = {
//         {__uuidof(Functions), L"ZuDBFFunctions.Functions", L"Table functions",
//         &zu::com::CreateObject<...>}};
//     const zu::com::Server kServer{kClasses, 1};
//
//     STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
//         return zu::com::GetClassObject(kServer, id, iid, object);
//     }
//     STDAPI DllCanUnloadNow() { return zu::com::Module::CanUnloadNow(); }
//     STDAPI DllRegisterServer() { return zu::com::RegisterServer(kServer); }
//     STDAPI DllUnregisterServer() { return zu::com::UnregisterServer(kServer); }
//     STDAPI DllInstall(BOOL install, LPCWSTR how) { return zu::com::InstallServer(kServer, install, how); }
//
// CMake: `zu_com_server(TARGET LIBRARY...)` adds the exports and the type libraries to the DLL.

namespace zu::com {

HRESULT GetClassObject(const Server& server, REFCLSID id, REFIID iid, void** object) noexcept;

/// Registers for the whole machine where the rights suffice, else for the current user.
HRESULT RegisterServer(const Server& server) noexcept;
/// Removes what either kind of registration made, as far as the rights go. What is gone already is no error.
HRESULT UnregisterServer(const Server& server) noexcept;
/// As `regsvr32 /n /i:how` calls it: L"user" registers for the current user, L"machine" for the machine,
/// anything else as RegisterServer and UnregisterServer.
HRESULT InstallServer(const Server& server, BOOL install, LPCWSTR how) noexcept;

}  // namespace zu::com
