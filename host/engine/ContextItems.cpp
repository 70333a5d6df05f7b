#include "host/engine/ContextItems.h"

#include <string>
#include <utility>

#include "com/ComError.h"
#include "idl/ZuDataViewInterface.h"

namespace zu::host {
namespace {

/// Handles begin here, so that a number of an item taken for a handle is noticed.
constexpr LONG kFirstHandle = 0x1000;

bool IsNothing(const VARIANT& value) noexcept {
    return value.vt == VT_EMPTY || value.vt == VT_NULL || com::IsMissing(value) ||
           ((value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) && !value.punkVal);
}

}  // namespace

LONG ContextItems::HandleOf(LONG item) {
    if (item < 1 || item > kGreatestItem)
        throw com::ComError(E_INVALIDARG, L"There is no context item " + std::to_wstring(item));
    return kFirstHandle + item;
}

LONG ContextItems::ItemOf(LONG handle) {
    const LONG item = handle - kFirstHandle;
    if (handle < kFirstHandle || item < 1 || item > kGreatestItem)
        throw com::ComError(E_INVALIDARG, std::to_wstring(handle) + L" is not the handle of a context item");
    return item;
}

com::Variant ContextItems::Get(LONG handle) const {
    const LONG item = ItemOf(handle);
    if (const auto found = items_.find(item); found != items_.end()) return found->second;
    if (item == kView) return com::Variant(static_cast<IDispatch*>(nullptr));
    if (item == kRecordNumber) return com::Variant(LONG{0});
    return {};
}

void ContextItems::Set(LONG handle, const VARIANT& value) {
    const LONG item = ItemOf(handle);
    // The number of the record changes with every record of a job.
    if (const auto found = items_.find(item);
        value.vt == VT_I4 && found != items_.end() && found->second.type() == VT_I4) {
        found->second.address()->lVal = value.lVal;
        return;
    }
    com::Variant copy(value);
    if (IsNothing(copy)) {
        // The old value dies after the map has changed: its release may come back here.
        if (auto old = items_.extract(item)) old.mapped() = com::Variant();
        return;
    }
    if (item == kView && !com::ObjectOf<ZuDataView>(copy))
        throw com::ComError(com::kTypeMismatch, L"The view being processed must be a data view");
    std::swap(items_[item], copy);
}

void ContextItems::Clear() noexcept {
    std::map<LONG, com::Variant> old;
    old.swap(items_);
}

}  // namespace zu::host
