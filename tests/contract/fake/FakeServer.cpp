#include "tests/contract/fake/FakeServer.h"

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/FakeProject.h"
#include "tests/contract/fake/PerThread.h"

namespace zu::fake {

namespace {

/// Makes projects. Static: it outlives every reference.
class ProjectFactory final : public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        const bool known = id == IID_IUnknown || id == IID_IClassFactory;
        *result = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        switch (Journal::OfThread().Enter("Create", "Zuengine.Zuproject")) {
            case Outcome::kFails:
                return Journal::OfThread().failure();
            case Outcome::kIsNothing:
                return S_OK;
            case Outcome::kRuns:
                break;
        }
        return Make<FakeProject>()->QueryInterface(id, result);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace

FakeServer& FakeServer::OfThread() {
    return OfThisThread<FakeServer>();
}

}  // namespace zu::fake

extern "C" HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID, REFIID id, void** result) {
    const HRESULT answer = zu::fake::FakeServer::OfThread().classObject;
    if (FAILED(answer)) return answer;
    static zu::fake::ProjectFactory factory;
    return factory.QueryInterface(id, result);
}

extern "C" HRESULT STDMETHODCALLTYPE DllCanUnloadNow() {
    return S_FALSE;
}
