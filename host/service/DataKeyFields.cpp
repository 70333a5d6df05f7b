#include "host/service/DataKeyFields.h"

#include <optional>

#include "com/EnumVariant.h"
#include "host/engine/Reporting.h"
#include "host/service/DataKeyField.h"

namespace zu::host {

HRESULT DataKeyFields::Item(VARIANT Index, ::DataKeyField** Result) noexcept {
    return GuardedResult(Result,
                         [&] { return com::MakeObject<DataKeyField>(key_, key_->Locate(Index)).detach(); });
}

HRESULT DataKeyFields::Count(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(key_->partCount()); });
}

HRESULT DataKeyFields::get__NewEnum(IUnknown** Result) noexcept {
    return GuardedResult(Result, [&] {
        return com::EnumVariant::Make([key = key_](ULONG position) -> std::optional<com::Variant> {
                   if (position >= key->partCount()) return std::nullopt;
                   return com::Variant(com::MakeObject<DataKeyField>(key, position).get());
               })
            .detach();
    });
}

}  // namespace zu::host
