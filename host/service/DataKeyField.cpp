#include "host/service/DataKeyField.h"

#include "com/Bstr.h"
#include "host/engine/Reporting.h"

namespace zu::host {

HRESULT DataKeyField::get_Name(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(key_->PartName(part_)); });
}

HRESULT DataKeyField::put_Value(VARIANT Value) noexcept {
    return Guarded([&] { key_->SetPartValue(part_, Value); });
}

HRESULT DataKeyField::get_Value(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return com::Variant(key_->PartValue(part_)).detach(); });
}

HRESULT DataKeyField::get_Type(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(key_->PartType(part_)); });
}

HRESULT DataKeyField::get_Descending(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(key_->IsDescending(part_)); });
}

HRESULT DataKeyField::get_Exact(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(key_->IsExact(part_)); });
}

HRESULT DataKeyField::put_Exact(VARIANT_BOOL Value) noexcept {
    return Guarded([&] { key_->SetExact(part_, Value != VARIANT_FALSE); });
}

}  // namespace zu::host
