#include "com/EnumVariant.h"

#include "com/ComError.h"

namespace zu::com {

ComPtr<IUnknown> EnumVariant::Make(Sequence sequence) {
    return ComPtr<IUnknown>(MakeAt(std::make_shared<const Sequence>(std::move(sequence)), 0).get());
}

ComPtr<IEnumVARIANT> EnumVariant::MakeAt(std::shared_ptr<const Sequence> sequence, ULONG position) {
    return ComPtr<IEnumVARIANT>::Adopt(new EnumVariant(std::move(sequence), position));
}

HRESULT EnumVariant::QueryInterface(REFIID iid, void** object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IEnumVARIANT)) return E_NOINTERFACE;
    *object = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
}

ULONG EnumVariant::AddRef() noexcept {
    return ++references_;
}

ULONG EnumVariant::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT EnumVariant::Next(ULONG count, VARIANT* elements, ULONG* fetched) noexcept {
    if (fetched) *fetched = 0;
    if (!elements && count > 0) return E_POINTER;
    if (count != 1 && !fetched) return E_INVALIDARG;
    for (ULONG index = 0; index < count; ++index)
        VariantInit(&elements[index]);
    ULONG taken = 0;
    const HRESULT result = Guard([&] {
        for (; taken < count; ++taken) {
            std::optional<Variant> element = (*sequence_)(position_ + taken);
            if (!element) break;
            elements[taken] = element->detach();
        }
    });
    if (FAILED(result)) {
        for (ULONG index = 0; index < taken; ++index)
            VariantClear(&elements[index]);
        return result;
    }
    position_ += taken;
    if (fetched) *fetched = taken;
    return taken == count ? S_OK : S_FALSE;
}

HRESULT EnumVariant::Skip(ULONG count) noexcept {
    bool enough = true;
    const HRESULT result = Guard([&] {
        for (ULONG index = 0; index < count && enough; ++index) {
            enough = (*sequence_)(position_).has_value();
            if (enough) ++position_;
        }
    });
    if (FAILED(result)) return result;
    return enough ? S_OK : S_FALSE;
}

HRESULT EnumVariant::Reset() noexcept {
    position_ = 0;
    return S_OK;
}

HRESULT EnumVariant::Clone(IEnumVARIANT** copy) noexcept {
    if (!copy) return E_POINTER;
    *copy = nullptr;
    return Guard([&] { *copy = MakeAt(sequence_, position_).detach(); });
}

}  // namespace zu::com
