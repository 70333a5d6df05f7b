#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>

#include "com/ClassTable.h"
#include "com/Module.h"

namespace zu::com {

/// Makes objects of one class of the table. Aggregation is not supported.
class ClassFactory final : public IClassFactory {
public:
    explicit ClassFactory(const ClassEntry& entry) noexcept : entry_(entry) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) noexcept override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override;

private:
    const ClassEntry& entry_;
    std::atomic<ULONG> references_{1};
    ObjectCount counted_;
};

}  // namespace zu::com
