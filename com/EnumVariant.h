#pragma once

#include <windows.h>

#include <oleauto.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "com/ComPtr.h"
#include "com/Module.h"
#include "com/Variant.h"

namespace zu::com {

/// What a "for each" walks over: the element at a position from 0, or nothing past the end. The function
/// keeps its collection alive (a captured ComPtr) and may throw.
using Sequence = std::function<std::optional<Variant>(ULONG position)>;

/// IEnumVARIANT over a sequence. Clones share the sequence and have a position of their own.
class EnumVariant final : public IEnumVARIANT {
public:
    /// For the _NewEnum of a collection.
    static ComPtr<IUnknown> Make(Sequence sequence);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override;
    ULONG STDMETHODCALLTYPE AddRef() noexcept override;
    ULONG STDMETHODCALLTYPE Release() noexcept override;
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* elements, ULONG* fetched) noexcept override;
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) noexcept override;
    HRESULT STDMETHODCALLTYPE Reset() noexcept override;
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) noexcept override;

private:
    EnumVariant(std::shared_ptr<const Sequence> sequence, ULONG position) noexcept
        : sequence_(std::move(sequence)), position_(position) {}
    ~EnumVariant() = default;

    static ComPtr<IEnumVARIANT> MakeAt(std::shared_ptr<const Sequence> sequence, ULONG position);

    std::shared_ptr<const Sequence> sequence_;
    ULONG position_;
    std::atomic<ULONG> references_{1};
    ObjectCount counted_;
};

}  // namespace zu::com
