#include "com/Variant.h"

#include "com/ComError.h"

namespace zu::com {
namespace {

// Real callers nest references two deep; the bound only keeps a VARIANT that refers to itself from hanging
// us.
constexpr int kMaxReferences = 8;

[[noreturn]] void ThrowConversion(HRESULT result) {
    if (result == DISP_E_TYPEMISMATCH || result == DISP_E_BADVARTYPE) {
        throw ComError(kTypeMismatch, L"Type mismatch");
    }
    if (result == DISP_E_OVERFLOW) throw ComError(kOverflow, L"Overflow");
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    throw ComError(result);
}

}  // namespace

const VARIANT& Dereference(const VARIANT& value) noexcept {
    const VARIANT* content = &value;
    for (int depth = 0; depth < kMaxReferences; ++depth) {
        if (content->vt != (VT_BYREF | VT_VARIANT) || !content->pvarVal) break;
        content = content->pvarVal;
    }
    return *content;
}

bool IsMissing(const VARIANT& value) noexcept {
    const VARIANT& content = Dereference(value);
    if (content.vt == VT_ERROR) return content.scode == DISP_E_PARAMNOTFOUND;
    return content.vt == (VT_ERROR | VT_BYREF) && content.pscode && *content.pscode == DISP_E_PARAMNOTFOUND;
}

bool IsMissing(const VARIANT* value) noexcept {
    return !value || IsMissing(*value);
}

std::optional<std::wstring_view> TextOf(const VARIANT& value) noexcept {
    const VARIANT& content = Dereference(value);
    if (content.vt == VT_BSTR) return View(content.bstrVal);
    if (content.vt == (VT_BSTR | VT_BYREF) && content.pbstrVal) return View(*content.pbstrVal);
    return std::nullopt;
}

Variant::Variant(const VARIANT& value) : Variant() {
    if (OwnsNothing(value.vt)) {
        value_ = value;
        return;
    }
    const HRESULT result = VariantCopyInd(&value_, const_cast<VARIANT*>(&Dereference(value)));
    if (FAILED(result)) ThrowConversion(result);
}

Variant::Variant(std::wstring_view text) : Variant() {
    value_.bstrVal = NewBstr(text);
    value_.vt = VT_BSTR;
}

Variant::Variant(IDispatch* object) noexcept : Variant() {
    value_.vt = VT_DISPATCH;
    value_.pdispVal = object;
    if (object) object->AddRef();
}

Variant Variant::Null() noexcept {
    Variant result;
    result.value_.vt = VT_NULL;
    return result;
}

Variant Variant::Missing() noexcept {
    Variant result;
    result.value_.vt = VT_ERROR;
    result.value_.scode = DISP_E_PARAMNOTFOUND;
    return result;
}

Variant Variant::Adopt(const VARIANT& value) noexcept {
    Variant result;
    result.value_ = value;
    return result;
}

Variant Convert(const VARIANT& value, VARTYPE type) {
    const VARIANT& content = Dereference(value);
    Variant result;
    // Truth values become "True" and "False", as everywhere in automation.
    const HRESULT code = VariantChangeTypeEx(result.address(), const_cast<VARIANT*>(&content),
                                             LOCALE_INVARIANT, VARIANT_ALPHABOOL, type);
    if (FAILED(code)) ThrowConversion(code);
    return result;
}

Bstr Variant::ToText() const {
    return Bstr::Adopt(Convert(value_, VT_BSTR).detach().bstrVal);
}

bool Variant::ToBoolean() const {
    if (value_.vt == VT_BOOL) return value_.boolVal != VARIANT_FALSE;
    return Convert(value_, VT_BOOL).value_.boolVal != VARIANT_FALSE;
}

LONG Variant::ToLong() const {
    if (value_.vt == VT_I4) return value_.lVal;
    return Convert(value_, VT_I4).value_.lVal;
}

double Variant::ToDouble() const {
    return Convert(value_, VT_R8).value_.dblVal;
}

}  // namespace zu::com
