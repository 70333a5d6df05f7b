#pragma once

#include <windows.h>

#include <string>

#include "com/ComPtr.h"
#include "idl/Zuengine.h"

namespace zu::test {

/// The built Zuengine.dll, loaded from the folder of this program without being registered.
class EngineDll {
public:
    EngineDll();
    EngineDll(const EngineDll&) = delete;
    EngineDll& operator=(const EngineDll&) = delete;
    ~EngineDll();

    static std::wstring Path();

    bool isLoaded() const { return module_ != nullptr; }
    HRESULT ClassObject(REFCLSID id, REFIID iid, void** object) const;
    HRESULT CanUnloadNow() const;

    template <class T>
    com::ComPtr<T> Create(REFCLSID id) const {
        com::ComPtr<IClassFactory> factory;
        com::ComPtr<T> object;
        if (SUCCEEDED(ClassObject(id, IID_IClassFactory, factory.putVoid())))
            factory->CreateInstance(nullptr, __uuidof(T), object.putVoid());
        return object;
    }
    com::ComPtr<ZuProject> Project() const { return Create<ZuProject>(__uuidof(::Project)); }

private:
    HMODULE module_;
};

}  // namespace zu::test
