#include "tests/contract/fake/FakeServer.h"

#include "tests/contract/fake/FakeObject.h"
#include "tests/contract/fake/FakeParser.h"
#include "tests/contract/fake/FakeProject.h"
#include "tests/contract/fake/PerThread.h"

namespace zu::fake {

namespace {

/// Makes the objects of one class. Static: it outlives every reference.
class Factory final : public IClassFactory {
public:
    using Maker = HRESULT (*)(REFIID id, void** result);
    Factory(const char* name, Maker make) : name_(name), make_(make) {}

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
        switch (Journal::OfThread().Enter("Create", name_)) {
            case Outcome::kFails:
                return Journal::OfThread().failure();
            case Outcome::kIsNothing:
                return S_OK;
            case Outcome::kRuns:
                break;
        }
        return make_(id, result);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

private:
    const char* name_;
    Maker make_;
};

}  // namespace

FakeServer& FakeServer::OfThread() {
    return OfThisThread<FakeServer>();
}

}  // namespace zu::fake

extern "C" HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID wanted, REFIID id, void** result) {
    const HRESULT answer = zu::fake::FakeServer::OfThread().classObject;
    if (FAILED(answer)) return answer;
    using zu::fake::Factory;
    using zu::fake::FakeParser;
    using zu::fake::FakeProject;
    using zu::fake::Make;
    static Factory projects("Zuengine.Zuproject", [](REFIID iid, void** object) {
        return Make<FakeProject>()->QueryInterface(iid, object);
    });
    static Factory parsers("ZuParser.Parser", [](REFIID iid, void** object) {
        return Make<FakeParser>()->QueryInterface(iid, object);
    });
    return (wanted == FakeParser::kClass ? parsers : projects).QueryInterface(id, result);
}

extern "C" HRESULT STDMETHODCALLTYPE DllCanUnloadNow() {
    return S_FALSE;
}
