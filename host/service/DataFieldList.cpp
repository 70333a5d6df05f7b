#include "host/service/DataFieldList.h"

#include <optional>
#include <string>
#include <utility>

#include "com/ComError.h"
#include "com/EnumVariant.h"
#include "host/engine/Reporting.h"

namespace zu::host {

const DataFieldList::Entry& DataFieldList::At(LONG index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= entries_.size())
        throw com::ComError(com::kSubscriptOutOfRange,
                            L"The field list has " + std::to_wstring(entries_.size()) +
                                L" entries counted from 0, there is no entry " + std::to_wstring(index));
    return entries_[static_cast<std::size_t>(index)];
}

HRESULT DataFieldList::Add(VARIANT Field, VARIANT_BOOL Descending) noexcept {
    return Guarded([&] {
        com::Variant field(Field);
        if (field.type() == VT_EMPTY || field.type() == VT_NULL || com::IsMissing(field))
            throw com::ComError(com::kTypeMismatch,
                                L"A field list takes names, expressions and field numbers");
        entries_.push_back({std::move(field), Descending != VARIANT_FALSE});
    });
}

HRESULT DataFieldList::Count(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(entries_.size()); });
}

HRESULT DataFieldList::Item(LONG Index, VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return com::Variant(At(Index).field).detach(); });
}

HRESULT DataFieldList::Descending(LONG Index, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(At(Index).descending); });
}

HRESULT DataFieldList::get__NewEnum(IUnknown** Result) noexcept {
    return GuardedResult(Result, [&] {
        return com::EnumVariant::Make(
                   [self = com::ComPtr(this)](ULONG position) -> std::optional<com::Variant> {
                       if (position >= self->entries_.size()) return std::nullopt;
                       return self->entries_[position].field;
                   })
            .detach();
    });
}

HRESULT DataFieldList::Clear() noexcept {
    return Guarded([&] { entries_.clear(); });
}

}  // namespace zu::host
