#include "com/ModuleExports.h"

#include <cwchar>

#include "com/ClassFactory.h"
#include "com/Registration.h"

namespace zu::com {

HRESULT GetClassObject(const Server& server, REFCLSID id, REFIID iid, void** object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    for (const ClassEntry& entry : server.classes) {
        if (!IsEqualCLSID(entry.id, id)) continue;
        return Guard([&] {
            // Guard catches what the allocation throws, which lint does not see through the call.
            const auto factory = ComPtr<ClassFactory>::Adopt(
                new ClassFactory(entry));  // NOLINT(bugprone-unhandled-exception-at-new)
            Check(factory->QueryInterface(iid, object));
        });
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT RegisterServer(const Server& server) noexcept {
    return Guard([&] {
        const Registration registration(server);
        const Scope scope = Registration::MayWriteMachine() ? Scope::Machine : Scope::User;
        try {
            registration.Register(scope);
        } catch (...) {
            registration.Unregister(scope);  // half a registration helps nobody
            throw;
        }
    });
}

HRESULT UnregisterServer(const Server& server) noexcept {
    return Guard([&] {
        const Registration registration(server);
        registration.Unregister(Scope::User);
        if (Registration::MayWriteMachine()) registration.Unregister(Scope::Machine);
    });
}

HRESULT InstallServer(const Server& server, BOOL install, LPCWSTR how) noexcept {
    const bool user = how && _wcsicmp(how, L"user") == 0;
    const bool machine = how && _wcsicmp(how, L"machine") == 0;
    if (!user && !machine) return install ? RegisterServer(server) : UnregisterServer(server);
    return Guard([&] {
        const Registration registration(server);
        const Scope scope = user ? Scope::User : Scope::Machine;
        if (install) {
            registration.Register(scope);
        } else {
            registration.Unregister(scope);
        }
    });
}

}  // namespace zu::com
