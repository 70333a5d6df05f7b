#include "com/ConnectionPointList.h"

#include <algorithm>

#include "com/ComError.h"

namespace zu::com {

ComPtr<IEnumConnectionPoints> ConnectionPointList::MakeAt(IConnectionPoint& point, bool passed) {
    return ComPtr<IEnumConnectionPoints>::Adopt(new ConnectionPointList(point, passed));
}

HRESULT ConnectionPointList::QueryInterface(REFIID iid, void** object) noexcept {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IEnumConnectionPoints)) return E_NOINTERFACE;
    *object = static_cast<IEnumConnectionPoints*>(this);
    AddRef();
    return S_OK;
}

ULONG ConnectionPointList::AddRef() noexcept {
    return ++references_;
}

ULONG ConnectionPointList::Release() noexcept {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT ConnectionPointList::Next(ULONG count, IConnectionPoint** points, ULONG* fetched) noexcept {
    if (fetched) *fetched = 0;
    if (!points && count > 0) return E_POINTER;
    if (count != 1 && !fetched) return E_POINTER;
    std::fill_n(points, count, nullptr);
    if (count == 0) return S_OK;
    if (passed_) return S_FALSE;
    points[0] = point_.copy();
    passed_ = true;
    if (fetched) *fetched = 1;
    return count == 1 ? S_OK : S_FALSE;
}

HRESULT ConnectionPointList::Skip(ULONG count) noexcept {
    if (count == 0) return S_OK;
    const bool enough = count == 1 && !passed_;
    passed_ = true;
    return enough ? S_OK : S_FALSE;
}

HRESULT ConnectionPointList::Reset() noexcept {
    passed_ = false;
    return S_OK;
}

HRESULT ConnectionPointList::Clone(IEnumConnectionPoints** copy) noexcept {
    if (!copy) return E_POINTER;
    *copy = nullptr;
    return Guard([&] { *copy = MakeAt(*point_, passed_).detach(); });
}

}  // namespace zu::com
