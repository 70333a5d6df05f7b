#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

#include <array>
#include <atomic>
#include <type_traits>
#include <utility>

#include "com/ComError.h"
#include "com/ComPtr.h"
#include "com/Dispatcher.h"
#include "com/Module.h"
#include "com/TypeLibrary.h"

namespace zu::com {

/// The base of every automation object: reference count, QueryInterface, IDispatch over the type library of
/// the module, ISupportErrorInfo, IProvideClassInfo.
///
///     class ZuDbRef final : public com::DualObject<ZuDbRef, _ZuDbRef> { ... };
///     ComPtr<ZuDbRef> object = com::MakeObject<ZuDbRef>(constructor arguments...);
///
/// `Primary` is what IDispatch answers with. `Others` are further interfaces; those derived from IDispatch
/// take part in dispatch by name, so their dispatch ids must not repeat (the first interface wins).
///
/// A class may have
///  - `static CLSID classId()`: then IProvideClassInfo is answered;
///  - `static com::DispatchOptions dispatchOptions()`: internal names, interfaces of other libraries;
///  - `static void adjustDispatchResult(VARIANT&)`: a last change to results of calls by name, for values
///  that
///    script engines take in another form than vtable callers;
///  - `HRESULT QueryMore(REFIID, void**)` overridden: interfaces that are not in the list. It follows the
///  rules
///    of QueryInterface and answers E_NOINTERFACE otherwise.
template <class Self, class Primary, class... Others>
class DualObject : public Primary, public Others..., public ISupportErrorInfo, public IProvideClassInfo {
public:
    DualObject() noexcept = default;
    DualObject(const DualObject&) = delete;
    DualObject& operator=(const DualObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept final {
        if (!object) return E_POINTER;
        *object = FindInterface(iid);
        if (!*object) return QueryMore(iid, object);
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() noexcept final { return ++references_; }

    ULONG STDMETHODCALLTYPE Release() noexcept final {
        const ULONG left = --references_;
        if (left == 0) {
            // A destructor that hands `this` to a callee for a moment must not destroy the object again.
            references_ = kBeingDestroyed;
            delete static_cast<Self*>(this);
        }
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept final {
        if (!count) return E_POINTER;
        *count = 1;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) noexcept final {
        if (!info) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return Guard([&] { *info = TypeLibrary::Find(__uuidof(Primary)).detach(); });
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) noexcept final {
        if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
        const Dispatcher* dispatcher = FindDispatcher();
        return dispatcher ? dispatcher->GetIDsOfNames(names, count, ids) : TYPE_E_CANTLOADLIBRARY;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception,
                                     UINT* badArgument) noexcept final {
        if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
        const Dispatcher* dispatcher = FindDispatcher();
        if (!dispatcher) return TYPE_E_CANTLOADLIBRARY;
        const ComPtr<Primary> alive(this);  // a member may make the caller let go of the object
        const auto pointers = DispatchPointers();
        const HRESULT outcome =
            dispatcher->Invoke(pointers, id, locale, flags, parameters, result, exception, badArgument);
        if constexpr (requires { Self::adjustDispatchResult(*result); }) {
            if (SUCCEEDED(outcome) && result) Self::adjustDispatchResult(*result);
        }
        return outcome;
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) noexcept final {
        const bool known = IsEqualIID(iid, __uuidof(Primary)) || (IsEqualIID(iid, __uuidof(Others)) || ...) ||
                           IsEqualIID(iid, IID_IDispatch);
        return known ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept final {
        if (!info) return E_POINTER;
        *info = nullptr;
        if constexpr (requires { Self::classId(); }) {
            return Guard([&] { *info = TypeLibrary::Find(Self::classId()).detach(); });
        } else {
            return E_NOTIMPL;
        }
    }

protected:
    virtual ~DualObject() = default;

    /// Interfaces beyond the list; `*object` is null when it is called.
    virtual HRESULT QueryMore(REFIID, void**) noexcept { return E_NOINTERFACE; }

private:
    static constexpr ULONG kBeingDestroyed = 0x40000000;

    template <class T>
    static constexpr bool kDispatches = std::is_base_of_v<IDispatch, T>;
    static constexpr std::size_t kDispatchCount = 1 + (0 + ... + (kDispatches<Others> ? 1 : 0));

    void* FindInterface(REFIID iid) noexcept {
        auto* primary = static_cast<Primary*>(this);
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch)) return primary;
        if (IsEqualIID(iid, __uuidof(Primary))) return primary;
        void* found = nullptr;
        ((found == nullptr && IsEqualIID(iid, __uuidof(Others)) ? void(found = static_cast<Others*>(this))
                                                                : void()),
         ...);
        if (found) return found;
        if (IsEqualIID(iid, IID_ISupportErrorInfo)) return static_cast<ISupportErrorInfo*>(this);
        if constexpr (requires { Self::classId(); }) {
            if (IsEqualIID(iid, IID_IProvideClassInfo)) return static_cast<IProvideClassInfo*>(this);
        }
        return nullptr;
    }

    std::array<void*, kDispatchCount> DispatchPointers() noexcept {
        std::array<void*, kDispatchCount> pointers{static_cast<Primary*>(this)};
        [[maybe_unused]] std::size_t next = 1;
        ((kDispatches<Others> ? void(pointers[next++] = static_cast<Others*>(this)) : void()), ...);
        return pointers;
    }

    static Dispatcher MakeDispatcher() {
        std::array<IID, kDispatchCount> ids{__uuidof(Primary)};
        [[maybe_unused]] std::size_t next = 1;
        ((kDispatches<Others> ? void(ids[next++] = __uuidof(Others)) : void()), ...);
        if constexpr (requires { Self::dispatchOptions(); }) {
            return Dispatcher(ids, Self::dispatchOptions());
        } else {
            return Dispatcher(ids, {});
        }
    }

    /// Made at the first call by name; null when the type library cannot be read.
    static const Dispatcher* FindDispatcher() noexcept {
        try {
            static const Dispatcher dispatcher = MakeDispatcher();
            return &dispatcher;
        } catch (...) {
            return nullptr;
        }
    }

    std::atomic<ULONG> references_{1};
    ObjectCount counted_;
};

/// A new object with one reference.
template <class T, class... Arguments>
ComPtr<T> MakeObject(Arguments&&... arguments) {
    return ComPtr<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace zu::com
