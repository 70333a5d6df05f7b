#pragma once

#include <windows.h>

#include <oleauto.h>

#include <optional>
#include <string_view>

#include "com/Bstr.h"
#include "com/ComPtr.h"

namespace zu::com {

/// Looks through VT_BYREF|VT_VARIANT (any depth): the VARIANT that holds the content.
const VARIANT& Dereference(const VARIANT& value) noexcept;

/// An omitted optional argument: VT_ERROR with DISP_E_PARAMNOTFOUND, looked through references; a null
/// pointer counts as omitted too.
bool IsMissing(const VARIANT& value) noexcept;
bool IsMissing(const VARIANT* value) noexcept;

/// The text when the VARIANT holds one (VT_BSTR, also by reference); nothing for any other content.
std::optional<std::wstring_view> TextOf(const VARIANT& value) noexcept;

inline VARIANT_BOOL ToVariantBool(bool value) noexcept {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

/// True for the kinds of content that own nothing: numbers, dates, truth values, errors, no content.
constexpr bool OwnsNothing(VARTYPE type) noexcept {
    constexpr DWORD kPlain = 1U << VT_EMPTY | 1U << VT_NULL | 1U << VT_I2 | 1U << VT_I4 | 1U << VT_R4 |
                             1U << VT_R8 | 1U << VT_CY | 1U << VT_DATE | 1U << VT_ERROR | 1U << VT_BOOL |
                             1U << VT_DECIMAL | 1U << VT_I1 | 1U << VT_UI1 | 1U << VT_UI2 | 1U << VT_UI4 |
                             1U << VT_I8 | 1U << VT_UI8 | 1U << VT_INT | 1U << VT_UINT;
    return type <= VT_UINT && (kPlain >> type & 1U) != 0;
}

/// Owns a VARIANT. Plain content is set and given up without a call of the automation library, as loops over
/// records do it several times for each.
class Variant {
public:
    Variant() noexcept = default;
    /// A deep copy with references resolved (VariantCopyInd). Throws ComError.
    explicit Variant(const VARIANT& value);
    Variant(const Variant& other) : Variant(other.value_) {}
    Variant(Variant&& other) noexcept : value_(other.value_) { other.value_.vt = VT_EMPTY; }
    ~Variant() {
        if (!OwnsNothing(value_.vt)) VariantClear(&value_);
    }
    Variant& operator=(Variant other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }

    explicit Variant(std::wstring_view text);
    /// A literal; without this one it would become a truth value.
    explicit Variant(const wchar_t* text) : Variant(std::wstring_view(text)) {}
    explicit Variant(bool value) noexcept {
        value_.vt = VT_BOOL;
        value_.boolVal = ToVariantBool(value);
    }
    explicit Variant(LONG value) noexcept {
        value_.vt = VT_I4;
        value_.lVal = value;
    }
    explicit Variant(SHORT value) noexcept {
        value_.vt = VT_I2;
        value_.iVal = value;
    }
    explicit Variant(double value) noexcept {
        value_.vt = VT_R8;
        value_.dblVal = value;
    }
    /// An object (adds a reference); null gives VT_DISPATCH with no object.
    explicit Variant(IDispatch* object) noexcept;

    static Variant Null() noexcept;
    static Variant Missing() noexcept;
    static Variant Adopt(const VARIANT& value) noexcept;

    VARTYPE type() const noexcept { return value_.vt; }
    const VARIANT& get() const noexcept { return value_; }
    operator const VARIANT&() const noexcept { return value_; }
    const VARIANT* operator->() const noexcept { return &value_; }

    VARIANT* put() noexcept {
        if (!OwnsNothing(value_.vt)) VariantClear(&value_);
        value_.vt = VT_EMPTY;
        return &value_;
    }
    /// For [in, out] parameters: keeps the content.
    VARIANT* address() noexcept { return &value_; }
    [[nodiscard]] VARIANT detach() noexcept {
        VARIANT result = value_;
        value_.vt = VT_EMPTY;
        return result;
    }

    /// Automation conversions of the invariant locale; failures are ComErrors (type mismatch, overflow).
    Bstr ToText() const;
    bool ToBoolean() const;
    LONG ToLong() const;
    double ToDouble() const;

private:
    VARIANT value_{};
};

/// The automation conversion of any VARIANT to `type` (VariantChangeTypeEx, invariant locale).
Variant Convert(const VARIANT& value, VARTYPE type);

/// The object in a VARIANT under interface T, looked through references; null for Nothing or another content.
template <class T>
ComPtr<T> ObjectOf(const VARIANT& value) noexcept {
    const VARIANT& content = Dereference(value);
    IUnknown* object = nullptr;
    if (content.vt == VT_DISPATCH) object = content.pdispVal;
    if (content.vt == VT_UNKNOWN) object = content.punkVal;
    if (content.vt == (VT_DISPATCH | VT_BYREF) && content.ppdispVal) object = *content.ppdispVal;
    if (content.vt == (VT_UNKNOWN | VT_BYREF) && content.ppunkVal) object = *content.ppunkVal;
    ComPtr<T> result;
    if (object) object->QueryInterface(__uuidof(T), result.putVoid());
    return result;
}

}  // namespace zu::com
