#pragma once

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <string>
#include <utility>

#include "com/ComPtr.h"
#include "tests/contract/fake/Journal.h"
#include "tests/contract/fake/Rendering.h"
#include "tests/contract/fake/Scenario.h"

namespace zu::fake {

/// Base of the fake's objects: counts its references, tells the journal of its life, and answers
/// QueryInterface for the interfaces of `Bases` unless the scenario withholds them. The component calls the
/// vtable only, so there is no late binding here.
template <class... Bases>
class FakeObject : public Bases... {
public:
    explicit FakeObject(const std::string& kind) : journal_(Journal::OfThread()) {
        journal_.Born(Identity(), kind);
    }
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        const auto& withheld = Scene().withheld;
        if (std::find(withheld.begin(), withheld.end(), id) != withheld.end()) return E_NOINTERFACE;
        if (id == IID_IUnknown || id == IID_IDispatch) *result = Identity();
        ((id == __uuidof(typename Bases::Interface) && Answers(id)
              ? void(*result = static_cast<typename Bases::Interface*>(this))
              : void()),
         ...);
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (!left) delete this;
        return left;
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }

protected:
    virtual ~FakeObject() { journal_.Died(Identity()); }

    /// Lets an object keep an interface back until it is ready for it.
    virtual bool Answers(REFIID) { return true; }

    /// Records the call and fills `result` with what `produce` answers.
    template <class T, class Produce>
    HRESULT Answer(const char* operation, const std::string& arguments, T* result, Produce&& produce) {
        if (!result) return E_POINTER;
        *result = T{};
        switch (journal_.Enter(operation, arguments)) {
            case Outcome::kFails:
                return Fail();
            case Outcome::kIsNothing:
                return S_OK;
            case Outcome::kRuns:
                break;
        }
        *result = std::forward<Produce>(produce)();
        return S_OK;
    }
    /// As Answer, for operations without a result.
    template <class Body>
    HRESULT Do(const char* operation, const std::string& arguments, Body&& body) {
        switch (journal_.Enter(operation, arguments)) {
            case Outcome::kFails:
                return Fail();
            case Outcome::kIsNothing:
                return S_OK;
            case Outcome::kRuns:
                break;
        }
        std::forward<Body>(body)();
        return S_OK;
    }

private:
    using Primary = std::tuple_element_t<0, std::tuple<Bases...>>;

    void* Identity() { return static_cast<IDispatch*>(static_cast<Primary*>(this)); }

    /// A well-behaved engine leaves a text with its failures.
    HRESULT Fail() {
        com::ComPtr<ICreateErrorInfo> creator;
        if (SUCCEEDED(CreateErrorInfo(creator.put()))) {
            com::Bstr text(L"the fake engine failed as it was told");
            creator->SetDescription(text.get());
            if (const auto information = creator.template tryAs<IErrorInfo>())
                SetErrorInfo(0, information.get());
        }
        return journal_.failure();
    }

    Journal& journal_;
    ULONG references_ = 1;
};

/// A new object, owned.
template <class T, class... Arguments>
com::ComPtr<T> Make(Arguments&&... arguments) {
    return com::ComPtr<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace zu::fake
