#include "host/service/DataFields.h"

#include <optional>

#include "com/Bstr.h"
#include "com/EnumVariant.h"
#include "host/engine/Reporting.h"

namespace zu::host {

const com::ComPtr<DataField>& DataFields::At(std::size_t field) {
    com::ComPtr<DataField>& made = fields_[field];
    if (!made) made = com::MakeObject<DataField>(cursor_, field);
    return made;
}

HRESULT DataFields::get_Item(VARIANT Index, ZuDataField** Result) noexcept {
    return GuardedResult(Result, [&] { return Get(Index).copy(); });
}

HRESULT DataFields::get_Count(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(cursor_->fields().size()); });
}

HRESULT DataFields::get__NewEnum(IUnknown** Result) noexcept {
    return GuardedResult(Result, [&] {
        return com::EnumVariant::Make(
                   [self = com::ComPtr(this)](ULONG position) -> std::optional<com::Variant> {
                       if (position >= self->cursor_->fields().size()) return std::nullopt;
                       return com::Variant(self->At(position).get());
                   })
            .detach();
    });
}

HRESULT DataFields::Exists(BSTR Name, VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result,
                         [&] { return com::ToVariantBool(cursor_->Find(com::View(Name)) != kNoField); });
}

}  // namespace zu::host
