#include "com/ModuleExports.h"
#include "component/engine/EngineLink.h"
#include "component/functions/Functions.h"
#include "component/table/ZuDbRef.h"
#include "component/textio/ZuDbfControl.h"
#include "component/textio/ZuExportFormat.h"
#include "component/textio/ZuExportFormats.h"
#include "component/textio/ZuImportFormat.h"
#include "component/textio/ZuImportFormats.h"

namespace {

using zu::com::ClassEntry;

/// Starts the component on the thread before the first object of any class is used there.
template <class T>
HRESULT Create(REFIID iid, void** object) noexcept {
    const HRESULT started = zu::com::Guard([] { zu::component::Engine(); });
    return FAILED(started) ? started : zu::com::CreateObject<T>(iid, object);
}

template <class T>
ClassEntry Entry(const wchar_t* progId, const wchar_t* description) {
    return {T::classId(), progId, description, &Create<T>};
}

const ClassEntry kClasses[] = {
    Entry<zu::component::Functions>(L"ZuDBFFunctions.Functions", L"Table functions for scripts"),
    Entry<zu::component::ZuDbRef>(L"ZuDBFFunctions.ZuDbRef", L"Reference to an open table"),
    Entry<zu::component::ZuDbfControl>(L"ZuDBFFunctions.ZuDbfControl", L"Import and export formats"),
    Entry<zu::component::ZuImportFormats>(L"ZuDBFFunctions.ZuImportFormats", L"Collection of import formats"),
    Entry<zu::component::ZuImportFormat>(L"ZuDBFFunctions.ZuImportFormat", L"Import format"),
    Entry<zu::component::ZuExportFormats>(L"ZuDBFFunctions.ZuExportFormats", L"Collection of export formats"),
    Entry<zu::component::ZuExportFormat>(L"ZuDBFFunctions.ZuExportFormat", L"Export format"),
};
const zu::com::Server kServer{kClasses, 1};

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
