#include "com/ThreadState.h"

#include <atomic>
#include <new>

namespace zu::com {

void ThreadPointer::Set(void* value) const {
    if (slot_ == TLS_OUT_OF_INDEXES || !TlsSetValue(slot_, value)) throw std::bad_alloc();
}

/// COM's observer of CoInitialize and CoUninitialize on the thread that registered it.
class ApartmentWatch::Spy final : public IInitializeSpy {
public:
    explicit Spy(Callback callback) noexcept : callback_(callback) { Module::ThreadStateBorn(); }
    ~Spy() { Module::ThreadStateGone(); }
    Spy(const Spy&) = delete;
    Spy& operator=(const Spy&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, __uuidof(IInitializeSpy)))
            return E_NOINTERFACE;
        *object = static_cast<IInitializeSpy*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) noexcept override {
        return result;
    }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD apartments) noexcept override {
        if (apartments == 1 && callback_) callback_();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD) noexcept override { return S_OK; }

    /// No call back any more, though COM may hold the spy a little longer.
    void Silence() noexcept { callback_ = nullptr; }

private:
    Callback callback_;
    std::atomic<ULONG> references_{1};
};

ApartmentWatch::ApartmentWatch(Callback callback) : spy_(new Spy(callback)) {
    const HRESULT result = CoRegisterInitializeSpy(spy_, &cookie_);
    if (FAILED(result)) {
        spy_->Release();
        throw ComError(result, L"The end of the thread's apartment cannot be watched");
    }
}

ApartmentWatch::~ApartmentWatch() {
    spy_->Silence();
    CoRevokeInitializeSpy(cookie_);
    spy_->Release();
}

}  // namespace zu::com
