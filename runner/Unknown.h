#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>
#include <utility>

#include "com/ComPtr.h"

namespace zu::runner {

/// IUnknown for the runner's own objects: counted references, and the listed interfaces by their identifiers.
/// Make them with MakeUnknown.
template <class Primary, class... Others>
class Unknown : public Primary, public Others... {
public:
    Unknown() = default;
    Unknown(const Unknown&) = delete;
    Unknown& operator=(const Unknown&) = delete;
    virtual ~Unknown() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        if (id == __uuidof(IUnknown) || id == __uuidof(Primary)) *result = static_cast<Primary*>(this);
        ((id == __uuidof(Others) ? void(*result = static_cast<Others*>(this)) : void()), ...);
        if (!*result && AnswersAsPrimary(id)) *result = static_cast<Primary*>(this);
        if (!*result) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++count_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --count_;
        if (left == 0) delete this;
        return left;
    }

protected:
    /// Further identifiers under which the primary interface is given out (event interfaces).
    virtual bool AnswersAsPrimary(REFIID) const noexcept { return false; }

private:
    std::atomic<ULONG> count_{1};
};

/// A new object of such a class, owned by the answered pointer.
template <class T, class... Arguments>
com::ComPtr<T> MakeUnknown(Arguments&&... arguments) {
    return com::ComPtr<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace zu::runner
