#include "host/service/DataField.h"

#include "com/Bstr.h"
#include "host/engine/Reporting.h"
#include "host/service/ValueConversion.h"

namespace zu::host {

void DataField::adjustDispatchResult(VARIANT& result) noexcept {
    MakeUsableForScripts(result);
}

HRESULT DataField::get_Name(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(Field().name); });
}

HRESULT DataField::get_Value(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return cursor_->Read(field_).detach(); });
}

HRESULT DataField::put_Value(VARIANT Value) noexcept {
    return Guarded([&] { cursor_->Write(field_, Value); });
}

HRESULT DataField::get_Index(LONG* Result) noexcept {
    // The pseudo-fields have no number.
    return GuardedResult(Result,
                         [&] { return field_ < cursor_->fields().size() ? static_cast<LONG>(field_) : -1L; });
}

HRESULT DataField::get_Type(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(Field().description.type); });
}

HRESULT DataField::get_TypeName(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] { return com::NewBstr(TypeNameOf(Field().description.type)); });
}

HRESULT DataField::get_DisplayWidth(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(Field().description.displayWidth); });
}

HRESULT DataField::get_ReadOnly(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] {
        return com::ToVariantBool(Field().description.readOnly || !cursor_->records()->isUpdateable());
    });
}

HRESULT DataField::get_Decimals(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(Field().description.decimals); });
}

HRESULT DataField::get_Nullable(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(Field().description.nullable); });
}

HRESULT DataField::get_IsNull(VARIANT_BOOL* Result) noexcept {
    return GuardedResult(Result, [&] { return com::ToVariantBool(cursor_->Read(field_).type() == VT_NULL); });
}

HRESULT DataField::get_OriginalValue(VARIANT* Result) noexcept {
    return GuardedResult(Result, [&] { return cursor_->ReadStored(field_).detach(); });
}

HRESULT DataField::get_Text(BSTR* Result) noexcept {
    return GuardedResult(Result, [&] {
        const technologies::Value text = FromVariant(cursor_->Read(field_), technologies::FieldType::Text);
        return com::NewBstr(com::AsWide(text.text));
    });
}

HRESULT DataField::get_Size(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(Field().description.size); });
}

HRESULT DataField::get_Alignment(LONG* Result) noexcept {
    return GuardedResult(Result, [&] { return static_cast<LONG>(AlignmentOf(Field().description)); });
}

}  // namespace zu::host
