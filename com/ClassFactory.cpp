#include "com/ClassFactory.h"

namespace zu::com {

HRESULT ClassFactory::QueryInterface(REFIID iid, void** object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IClassFactory)) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG ClassFactory::AddRef() noexcept {
    return ++references_;
}

ULONG ClassFactory::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    return entry_.create(iid, object);
}

HRESULT ClassFactory::LockServer(BOOL lock) noexcept {
    if (lock) {
        Module::Lock();
    } else {
        Module::Unlock();
    }
    return S_OK;
}

}  // namespace zu::com
