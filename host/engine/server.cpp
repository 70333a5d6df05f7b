// The entry points of Zuengine.dll.
#include "com/Module.h"
#include "com/ModuleExports.h"
#include "host/engine/ParserObject.h"
#include "host/engine/Zuproject.h"

namespace {

const zu::com::ClassEntry kClasses[] = {
    {__uuidof(::Project), L"Zuengine.Zuproject", L"Table engine for scripts",
     &zu::com::CreateObject<zu::host::Zuproject>},
    {__uuidof(::Parser), L"ZuParser.Parser", L"Expression of the table engine",
     &zu::com::CreateObject<zu::host::ParserObject>},
};

/// Zuengine, ZuDataViewInterface, ZuParser.
const zu::com::Server kServer{kClasses, 3};

}  // namespace

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
    return zu::com::GetClassObject(kServer, id, iid, object);
}

STDAPI DllCanUnloadNow() {
    return zu::com::Module::CanUnloadNow();
}

STDAPI DllRegisterServer() {
    return zu::com::RegisterServer(kServer);
}

STDAPI DllUnregisterServer() {
    return zu::com::UnregisterServer(kServer);
}

STDAPI DllInstall(BOOL install, LPCWSTR how) {
    return zu::com::InstallServer(kServer, install, how);
}
