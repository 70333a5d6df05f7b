#include "runner/ElementEnumerator.h"

#include <algorithm>

namespace zu::runner {

HRESULT ElementEnumerator::Next(ULONG wanted, VARIANT* elements, ULONG* fetched) {
    if (!elements && wanted > 0) return E_POINTER;
    ULONG count = 0;
    const HRESULT result = com::Guard([&] {
        for (; count < wanted && next_ < elements_.size(); ++count, ++next_) {
            com::Variant element = elements_[next_];
            elements[count] = element.detach();
        }
    });
    if (fetched) *fetched = count;
    if (FAILED(result)) return result;
    return count == wanted ? S_OK : S_FALSE;
}

HRESULT ElementEnumerator::Skip(ULONG count) {
    const std::size_t left = elements_.size() - next_;
    next_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
}

HRESULT ElementEnumerator::Reset() {
    next_ = 0;
    return S_OK;
}

HRESULT ElementEnumerator::Clone(IEnumVARIANT** result) {
    return com::GuardResult(
        result, [&]() -> IEnumVARIANT* { return MakeUnknown<ElementEnumerator>(elements_, next_).detach(); });
}

}  // namespace zu::runner
